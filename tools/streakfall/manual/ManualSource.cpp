#include "Compressions.h"
#include "Look.h"
#include "Manual.h"

namespace tool {

std::vector<std::string> ManualSource::controlNames() const {
    std::vector<std::string> names;
    for (const standin::ParamInfo& control : controls)
        if (!control.name.empty()) names.push_back(control.name);
    return names;
}

std::vector<std::string> ManualSource::looks() const {
    std::vector<std::string> names;
    for (const Look& look : shippedLooks()) names.push_back(look.key);
    return names;
}

std::vector<std::string> ManualSource::compressions() const { return compressionNames(); }

std::vector<std::string> ManualSource::settings() const {
    std::vector<std::string> texts;
    for (const standin::ParamInfo& control : controls) {
        if (!control.hasValue()) continue;
        if (control.type != PF_Param_CHECKBOX) {
            texts.push_back(control.name + "=");
            continue;
        }
        texts.push_back(control.name + "=on");
        texts.push_back(control.name + "=off");
    }
    return texts;
}

std::vector<std::string> ManualSource::keys() const {
    std::vector<std::string> texts;
    for (const standin::ParamInfo& control : controls)
        if (control.hasValue()) texts.push_back(control.name + "@");
    return texts;
}

}  // namespace tool
