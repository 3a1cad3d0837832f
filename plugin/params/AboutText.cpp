#include "params/AboutText.h"

#include "params/ProductVersion.h"
#include "params/Texts.h"
#include "platform/Platform.h"

namespace streakfall {

PF_Err about(const PF_InData* inData, PF_OutData* outData) {
    const auto print = inData->utils->ansi.sprintf;
    const char* const rights = lookupText(kTextRights);
    // The host's message box shows a carriage return as a new line.
    if (platform::shiftKeyDown()) {
        print(outData->return_msg, "%s %d.%d.%d %s build:%d %s\r\r%s", kProductName, kVersionMajor,
              kVersionMinor, kVersionBugFix, kVersionStage, kVersionBuild, "", rights);
    } else {
        print(outData->return_msg, "%s %d.%d.%d %s\r\r%s", kProductName, kVersionMajor,
              kVersionMinor, kVersionBugFix, "", rights);
    }
    return PF_Err_NONE;
}

}  // namespace streakfall
