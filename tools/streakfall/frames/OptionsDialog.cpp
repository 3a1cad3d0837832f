#include "OptionsDialog.h"

#include <cmath>
#include <filesystem>

#include "EffectSession.h"
#include "Failure.h"

namespace tool {

namespace {

using standin::ParamInfo;

// Points are never stored.
bool isStored(const ParamInfo& param) { return param.hasValue() && param.type != PF_Param_POINT; }

}  // namespace

const StandinDialogWindow& OptionsDialog::look() {
    leaveBy(kStandinDialogClose);
    return instance_.host().dialog().seen;
}

void OptionsDialog::save(const std::string& file) {
    std::error_code ignored;  // checkSaved tells
    std::filesystem::create_directories(std::filesystem::path(file).parent_path(), ignored);
    leaveBy(kStandinDialogFirstButton);
    checkSaved(file);
}

void OptionsDialog::restore(const std::string& file) {
    leaveBy(kStandinDialogSecondButton);
    if (std::filesystem::exists(file)) fail(Exit::kOutput, "cannot remove {}", file);
}

void OptionsDialog::leaveBy(A_long control) {
    standin::DialogTalk& talk = instance_.host().dialog();
    const long before = talk.shown;
    talk.answer = control;
    if (const PF_Err code = instance_.openDialog(); code != PF_Err_NONE)
        fail(Exit::kEffect, "the options dialog answered with code {}", code);
    if (talk.shown == before) fail(Exit::kEffect, "the effect showed no options dialog");
}

// The effect does not tell when its file could not be written, so ask it anew what its defaults
// are. A number goes through six decimals and single precision on its way.
void OptionsDialog::checkSaved(const std::string& file) {
    standin::Host& host = instance_.host();
    for (const ParamInfo& param : announcedNow(host.module(), host.offer())) {
        if (!isStored(param)) continue;
        const standin::Value wanted = instance_.value(param.id);
        for (std::size_t i = 0; i < wanted.part.size(); ++i) {
            const double difference = std::abs(wanted.part[i] - param.defaultValue.part[i]);
            if (difference > 1e-5 + 1e-6 * std::abs(wanted.part[i]))
                fail(Exit::kOutput, "cannot write {}: \"{}\" did not reach it", file, param.name);
        }
    }
}

}  // namespace tool
