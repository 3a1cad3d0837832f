#include "params/OptionsDialog.h"

#include <string>

#include "params/HostQuestions.h"
#include "params/ParamReads.h"
#include "params/Settings.h"
#include "params/Texts.h"
#include "platform/Platform.h"

namespace streakfall {

namespace {

constexpr std::uint16_t kDialogTemplate = 101;
constexpr std::uint16_t kGroupBox = 1015;
constexpr std::uint16_t kStoreButton = 1010;
constexpr std::uint16_t kRestoreButton = 1012;

enum DialogResult : std::uint32_t { kNothing = 0, kStore = 1, kRestore = 2 };

// What DoDialog owns and the procedure fills in.
struct DialogState {
    std::uint32_t result = kNothing;
    bool closeOnly = false;  // there is no settings file to store in
};

void centreOnParent(platform::Window dialog) {
    const platform::WindowRect own = platform::windowRect(dialog);
    const platform::WindowRect parent = platform::windowRect(platform::parentOf(dialog));
    const std::int32_t width = own.right - own.left;
    const std::int32_t height = own.bottom - own.top;
    platform::moveWindow(dialog, (parent.left + parent.right - width) / 2,
                         (parent.top + parent.bottom - height) / 2, width, height);
}

void openDialog(platform::Window dialog, DialogState& state) {
    platform::setDialogData(dialog, &state);
    centreOnParent(dialog);
    platform::setControlText(dialog, kGroupBox, lookupText(kTextSettings));
    platform::setControlText(dialog, kStoreButton, lookupText(kTextStoreDefaults));
    platform::setControlText(dialog, kRestoreButton, lookupText(kTextRestoreDefaults));
    if (state.closeOnly) {
        platform::enableControl(dialog, kStoreButton, false);
        platform::enableControl(dialog, kRestoreButton, false);
    }
}

void closeDialog(platform::Window dialog, DialogResult result) {
    if (result != kNothing) {
        static_cast<DialogState*>(platform::dialogData(dialog))->result = result;
    }
    platform::endDialog(dialog);
}

// No exception may pass through the system's frames: nothing here allocates but the language's
// first question, which is asked before the dialog opens.
std::intptr_t dialogProcedure(platform::Window dialog, std::uint32_t message, std::uintptr_t first,
                              std::intptr_t second) {
    switch (message) {
        case platform::kMessageInitDialog:
            openDialog(dialog, *reinterpret_cast<DialogState*>(second));
            return true;
        case platform::kMessageCommand:
            switch (first & 0xFFFF) {
                case kStoreButton:
                    closeDialog(dialog, kStore);
                    break;
                case kRestoreButton:
                    closeDialog(dialog, kRestore);
                    break;
                case platform::kCloseBox:
                    closeDialog(dialog, kNothing);
                    break;
            }
            return true;
        default:
            return false;
    }
}

// The values that the host put into the command, which are those of the current time.
void storeDefaults(PF_ParamDef* const* params, const std::string& path) {
    GetParamFromArray getter(params);
    CheckedOutParams values(getter);
    static_cast<void>(values.ReadAllParams(nullptr));
    values.saveDefaults(path.c_str());
    static_cast<void>(values.CheckInAllParams());
}

}  // namespace

void DoDialog(const PF_InData* inData, PF_ParamDef* const* params) {
    platform::Window mainWindow = nullptr;
    inData->utils->get_platform_data(inData->effect_ref, PF_PlatData_MAIN_WND, &mainWindow);
    // An old host uses nothing of the settings file.
    const std::string path = isOldHost(inData) ? std::string() : settingsPath(inData);

    DialogState state{.closeOnly = path.empty()};
    static_cast<void>(useEnglish());
    platform::runDialog(modulePath(inData).c_str(), kDialogTemplate, mainWindow, dialogProcedure,
                        &state);
    if (path.empty()) return;
    if (state.result == kStore) storeDefaults(params, path);
    if (state.result == kRestore) platform::deleteFile(path.c_str());
}

}  // namespace streakfall
