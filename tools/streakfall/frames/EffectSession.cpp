#include "EffectSession.h"

#include <sys/auxv.h>

#include <cstdlib>
#include <filesystem>
#include <limits>
#include <system_error>
#include <vector>

#include "Failure.h"

namespace tool {

namespace fs = std::filesystem;

namespace {

constexpr char kModuleName[] = "Q_Streakfall.so";

// The parts of the host's packed version word.
struct Version {
    A_u_long major, minor, bugFix;
};

Version unpack(A_u_long word) {
    return {(word >> 19 & 7) | (word >> 26 & 15) << 3, word >> 15 & 15, word >> 11 & 15};
}

standin::HostOffer offerOf(Defaults defaults, const std::string& toldPath) {
    standin::HostOffer offer;
    offer.guardBytes = 0;
    offer.watchPixels = false;
    // The effect looks for stored values beside the module. There can be no file below a device.
    offer.modulePath =
        defaults == Defaults::kOwn ? fmt::format("/dev/null/{}", kModuleName) : toldPath;
    return offer;
}

fs::path programFolder() {
    std::error_code error;
    fs::path program = fs::read_symlink("/proc/self/exe", error);
    // A system in a folder may have no /proc: then as the program was called.
    if (error) program = fs::canonical(reinterpret_cast<const char*>(getauxval(AT_EXECFN)), error);
    return program.parent_path();
}

fs::path installedModule() {
    return (programFolder() / STREAKFALL_MODULE_FOLDER / kModuleName).lexically_normal();
}

fs::path settingsFolder() {
    const auto folder = [](const char* variable) {
        const char* value = std::getenv(variable);
        return fs::path(value != nullptr ? value : "");
    };
    const fs::path own = folder("XDG_CONFIG_HOME");
    return (own.is_absolute() ? own : folder("HOME") / ".config") / "streakfall";
}

}  // namespace

std::string locateModule(const std::string& given) {
    std::error_code error;
    const fs::path beside = programFolder() / kModuleName;
    for (const fs::path& path :
         given.empty() ? std::vector{beside, installedModule()} : std::vector{fs::path(given)})
        if (fs::exists(path, error)) return fs::absolute(path).string();
    if (!given.empty()) fail(Exit::kEffect, "there is no effect module {}", given);
    fail(Exit::kEffect, "there is no effect module {}, nor {}; name it with --module",
         beside.string(), installedModule().string());
}

EffectSession::EffectSession(const std::string& modulePath, Defaults defaults) try
    : module_(locateModule(modulePath)),
      toldPath_(modulePath.empty() && module_.path() == installedModule()
                    ? settingsFolder() / kModuleName
                    : fs::path(module_.path())),
      host_(std::make_unique<standin::Host>(module_, offerOf(defaults, toldPath_))) {
    if (const PF_Err code = host_->start(); code != PF_Err_NONE)
        fail(Exit::kEffect, "the effect does not start: code {}", code);
} catch (const standin::ModuleError& error) {
    throw Failure(Exit::kEffect, error.what());
}

ParamArguments EffectSession::readArguments(const ParamTexts& texts) const {
    return ParamArguments(ParamLookup(host_->params()), settingsSection(), texts);
}

standin::Instance EffectSession::makeInstance(standin::LayerSize layer) {
    const std::lock_guard lock(making_);
    try {
        return standin::Instance(*host_, layer);
    } catch (const standin::EffectError& error) {
        throw Failure(Exit::kEffect, error.what());
    }
}

std::vector<standin::ParamInfo> EffectSession::announcedNow(Defaults defaults) {
    return tool::announcedNow(module_, offerOf(defaults, toldPath_));
}

std::string EffectSession::settingsFile() const {
    return fs::path(toldPath_).replace_extension("ini").string();
}

std::string EffectSession::settingsSection() const {
    const Version version = unpack(host_->global().version);
    return fmt::format("Version={}.{}", version.major, version.minor);
}

std::string EffectSession::version() const {
    const Version version = unpack(host_->global().version);
    return fmt::format("{}.{}.{}", version.major, version.minor, version.bugFix);
}

std::vector<standin::ParamInfo> announcedNow(standin::Module& module,
                                             const standin::HostOffer& offer) {
    standin::Host fresh(module, offer);
    if (const PF_Err code = fresh.start(); code != PF_Err_NONE)
        fail(Exit::kEffect, "the effect does not start again: code {}", code);
    return fresh.params();
}

A_long timeOf(int frame, const FrameRate& rate, std::string_view what) {
    const std::int64_t time = static_cast<std::int64_t>(frame) * rate.timeStep;
    if (std::abs(time) > std::numeric_limits<A_long>::max())
        failUsage("{}: frame {} is past the end of time at this --fps", what, frame);
    return static_cast<A_long>(time);
}

void storeValues(standin::Instance& instance, const ParamArguments& arguments,
                 const FrameRate& rate) {
    for (const auto& [index, keys] : arguments.values()) {
        for (const auto& [frame, key] : keys.byFrame) {
            const standin::Value value = valueOn(keys, key, instance.layer());
            if (!keys.keyed)
                instance.storeValue(keys.param->id, value);
            else
                instance.storeKey(keys.param->id,
                                  {timeOf(frame, rate, keys.param->name), rate.timeScale}, value,
                                  key.behind);
        }
    }
}

}  // namespace tool
