#include "EffectSession.h"

#include <cstdlib>
#include <filesystem>
#include <limits>
#include <system_error>

#include "Failure.h"
#include "Look.h"

namespace tool {

namespace {

constexpr char kModuleName[] = "Q_Streakfall.so";

// The parts of the host's packed version word.
struct Version {
    A_u_long major, minor, bugFix;
};

Version unpack(A_u_long word) {
    return {(word >> 19 & 7) | (word >> 26 & 15) << 3, word >> 15 & 15, word >> 11 & 15};
}

// The effect looks for stored values beside the module, wherever the host says that this is. There
// can be no file below a device.
standin::HostOffer offerFor(Defaults defaults) {
    standin::HostOffer offer;
    offer.guardBytes = 0;
    offer.watchPixels = false;
    if (defaults == Defaults::kOwn) offer.modulePath = fmt::format("/dev/null/{}", kModuleName);
    return offer;
}

}  // namespace

std::string locateModule(const std::string& given) {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path path =
        given.empty() ? program.parent_path() / kModuleName : std::filesystem::path(given);
    if (!std::filesystem::exists(path, error))
        fail(Exit::kEffect, "there is no effect module {}{}", path.string(),
             given.empty() ? "; name it with --module" : "");
    return std::filesystem::absolute(path).string();
}

EffectSession::EffectSession(const std::string& modulePath, Defaults defaults) try
    : module_(locateModule(modulePath)),
      host_(std::make_unique<standin::Host>(module_, offerFor(defaults))) {
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
    return tool::announcedNow(module_, offerFor(defaults));
}

std::string EffectSession::settingsFile() const {
    return std::filesystem::path(module_.path()).replace_extension("ini").string();
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

standin::Value valueOn(const ParamKeys& keys, const ParamKey& key, standin::LayerSize layer) {
    standin::Value value = key.value.on(layer);
    if (keys.madeFor)  // numbers alone are fitted, and a number is the first part
        value.part[0] = fitted(value.part[0], fitOf(keys.param->id), *keys.madeFor, layer);
    return value;
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
