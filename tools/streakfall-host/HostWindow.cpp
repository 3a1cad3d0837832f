#include "HostWindow.h"

#include <chrono>
#include <sstream>
#include <stdexcept>

#include "host/PathText.h"

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

std::wstring textOf(HWND window) {
    std::wstring text(256, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

// Whether the text is drawn whole, in the control's own font.
bool fits(HWND control, const std::wstring& text) {
    const HDC context = GetDC(control);
    auto* const font = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
    const HGDIOBJ before = SelectObject(context, font);
    SIZE size{};
    GetTextExtentPoint32W(context, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(context, before);
    ReleaseDC(control, context);
    RECT room{};
    GetClientRect(control, &room);
    return size.cx < room.right && size.cy < room.bottom;
}

}  // namespace

std::string describeDialog(HWND dialog) {
    RECT rect{};
    GetWindowRect(dialog, &rect);
    std::ostringstream words;
    words << "shown " << rect.left << ' ' << rect.top << ' ' << rect.right << ' ' << rect.bottom
          << "\ntitle " << pathText(textOf(dialog)) << '\n';
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        const std::wstring text = textOf(control);
        words << GetDlgCtrlID(control) << (IsWindowEnabled(control) ? " live " : " greyed ")
              << (fits(control, text) ? "whole " : "cut ") << pathText(text) << '\n';
    }
    return words.str();
}

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
