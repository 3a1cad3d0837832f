// The main window of the stand-in host, and an eye on the dialogs that open over it.
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace standin {

// Visible as long as it lives. Owner and thread: the program's main thread, whose modal dialogs
// keep it painted.
class HostWindow {
  public:
    HostWindow();
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND handle() const { return window_; }

  private:
    HWND window_;
};

// Waits, on a thread of its own, for the next dialog of this process and tells it once it is
// painted; gives up at the end of its life.
class DialogWatch {
  public:
    explicit DialogWatch(std::function<void(HWND dialog)> tell);

  private:
    std::jthread watcher_;
};

// In words, a line each and UTF-8: the dialog's rectangle on the screen and its title, then each
// control with its id, whether it can be used, whether its text fits, and the text.
std::string describeDialog(HWND dialog);

}  // namespace standin
