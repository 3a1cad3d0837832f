#include "HostWindow.h"

#include <chrono>
#include <stdexcept>

namespace standin {

namespace {

constexpr wchar_t kClassName[] = L"StreakfallHost";
constexpr wchar_t kDialogClass[] = L"#32770";  // the system's own name for dialogs
// Screen pixels: room for the dialog in its middle.
constexpr int kLeft = 20, kTop = 20, kWidth = 600, kHeight = 300;

HWND visibleDialog() {
    const HWND dialog = FindWindowW(kDialogClass, nullptr);
    DWORD process = 0;
    if (dialog != nullptr) GetWindowThreadProcessId(dialog, &process);
    return process == GetCurrentProcessId() && IsWindowVisible(dialog) ? dialog : nullptr;
}

void watch(const std::stop_token& stop, const std::function<void(HWND)>& tell) {
    constexpr std::chrono::milliseconds kPause{50};
    constexpr DWORD kPatience = 2000;  // milliseconds
    while (!stop.stop_requested()) {
        std::this_thread::sleep_for(kPause);
        const HWND dialog = visibleDialog();
        if (dialog == nullptr) continue;
        // Answered only when the dialog has caught up with its messages, the first paint among
        // them.
        DWORD_PTR answer = 0;
        RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
        SendMessageTimeoutW(dialog, WM_NULL, 0, 0, SMTO_NORMAL, kPatience, &answer);
        tell(dialog);
        return;
    }
}

}  // namespace

HostWindow::HostWindow() {
    const HINSTANCE program = GetModuleHandleW(nullptr);
    WNDCLASSW description{};
    description.lpfnWndProc = DefWindowProcW;
    description.hInstance = program;
    description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
    description.lpszClassName = kClassName;
    RegisterClassW(&description);
    window_ = CreateWindowExW(0, kClassName, L"streakfall-host", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                              kLeft, kTop, kWidth, kHeight, nullptr, nullptr, program, nullptr);
    if (window_ == nullptr) throw std::runtime_error("there is no screen for the host's window");
    UpdateWindow(window_);
}

HostWindow::~HostWindow() { DestroyWindow(window_); }

DialogWatch::DialogWatch(std::function<void(HWND dialog)> tell)
    : watcher_([tell = std::move(tell)](const std::stop_token& stop) { watch(stop, tell); }) {}

}  // namespace standin
