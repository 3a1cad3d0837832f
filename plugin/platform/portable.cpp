// Stands in for the system's functions where they are absent, with the effects that the effect
// relies on.
//
// Keys and command line can be given by environment variables, so that a terminal or a test can
// set them: STREAKFALL_SHIFT (1: the key is down) and STREAKFALL_COMMAND_LINE (instead of the
// process's own).
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>

#include "hostapi/DialogWindow.h"
#include "platform/Lock.h"
#include "platform/Platform.h"
#include "platform/PrivateProfile.h"

namespace streakfall::platform {

namespace {

// Bytes. A settings file holds about 1500; what is larger is something else, is not read and is
// left alone.
constexpr std::size_t kLargestFile = 1 << 20;

// Owner of an open file.
class File {
  public:
    File(const char* path, int flags, mode_t mode = 0)
        : descriptor_(::open(path, flags | O_CLOEXEC, mode)) {}
    ~File() { close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    explicit operator bool() const { return descriptor_ >= 0; }
    int descriptor() const { return descriptor_; }
    bool close() {
        const bool closed = descriptor_ < 0 || ::close(descriptor_) == 0;
        descriptor_ = -1;
        return closed;
    }

  private:
    int descriptor_;
};

// The file's text; nothing when it is no file of sensible size or cannot be read. A pipe or a
// device is not waited for.
std::optional<std::string> readFile(const char* path) {
    const File file(path, O_RDONLY | O_NONBLOCK);
    struct stat status {};
    if (!file || ::fstat(file.descriptor(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > static_cast<off_t>(kLargestFile)) {
        return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t filled = 0;
    while (filled < text.size()) {
        const ssize_t got = ::read(file.descriptor(), text.data() + filled, text.size() - filled);
        if (got < 0) return std::nullopt;
        if (got == 0) break;  // it has been cut meanwhile
        filled += static_cast<std::size_t>(got);
    }
    text.resize(filled);
    return text;
}

bool writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t put = ::write(descriptor, text.data(), text.size());
        if (put <= 0) return false;
        text.remove_prefix(static_cast<std::size_t>(put));
    }
    return true;
}

bool writeNewFile(const char* path, std::string_view text, mode_t mode) {
    File file(path, O_WRONLY | O_CREAT | O_EXCL, mode);
    return file && writeAll(file.descriptor(), text) && file.close();
}

// A reader sees the old text or the new one, never a part: the text is written beside the file,
// which is then renamed.
bool replaceFile(const std::string& path, std::string_view text, mode_t mode) {
    const std::string temporary = path + "." + std::to_string(::getpid()) + ".tmp";
    ::unlink(temporary.c_str());  // of a process that died
    if (writeNewFile(temporary.c_str(), text, mode) &&
        ::rename(temporary.c_str(), path.c_str()) == 0) {
        return true;
    }
    ::unlink(temporary.c_str());
    return false;
}

// Behind a symbolic link stands the file that is meant.
std::string resolved(const char* path) {
    // On the stack, where nothing is lost when the module's memory is at its end.
    char real[PATH_MAX];
    return ::realpath(path, real) != nullptr ? real : path;
}

// Renaming and removing ask the folder, not the file; a file marked read-only is to be kept.
bool isKept(const struct stat& status) {
    constexpr mode_t kAnyWriter = S_IWUSR | S_IWGRP | S_IWOTH;
    return !S_ISREG(status.st_mode) || (status.st_mode & kAnyWriter) == 0;
}

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string quotedIfNeeded(std::string_view argument) {
    const bool needed = argument.empty() || argument.find_first_of(" \t") != argument.npos;
    return needed ? '"' + std::string(argument) + '"' : std::string(argument);
}

// The arguments of this process, each ended by a zero byte.
std::string processArguments() {
    const File file("/proc/self/cmdline", O_RDONLY);
    std::string arguments;
    char part[4096];
    while (file) {
        const ssize_t got = ::read(file.descriptor(), part, sizeof part);
        if (got <= 0) break;
        arguments.append(part, static_cast<std::size_t>(got));
    }
    return arguments;
}

}  // namespace

void Lock::lock() { mutex_.lock(); }

void Lock::unlock() { mutex_.unlock(); }

std::uintptr_t threadNumber() { return ::pthread_self(); }

std::int32_t profileInt(const char* section, const char* key, std::int32_t fallback,
                        const char* file) {
    const auto text = readFile(file);
    const auto value = text ? profile::findValue(*text, section, key) : std::nullopt;
    return value ? profile::parseInteger(*value) : fallback;
}

std::size_t profileString(const char* section, const char* key, const char* fallback,
                          std::span<char> buffer, const char* file) {
    const auto text = readFile(file);
    const auto value = text ? profile::findValue(*text, section, key) : std::nullopt;
    const std::string_view result = value.value_or(std::string_view(fallback));
    const std::size_t length = result.copy(buffer.data(), buffer.size() - 1);
    buffer[length] = '\0';
    return length;
}

bool writeProfileString(const char* section, const char* key, const char* text, const char* file) {
    const std::string path = resolved(file);
    struct stat status {};
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (exists && isKept(status)) return false;
    const auto old = exists ? readFile(path.c_str()) : std::string();
    if (!old) return false;
    return replaceFile(path, profile::withValue(*old, section, key, text),
                       exists ? status.st_mode & 0777 : 0666);
}

bool deleteFile(const char* file) {
    struct stat status {};
    return ::stat(file, &status) == 0 && !isKept(status) && ::unlink(file) == 0;
}

// The dialog of a host without windows: its main window is a record that shows the texts and
// answers with a control.

namespace {

struct RunningDialog {
    StandinDialogWindow& window;
    void* data = nullptr;

    StandinDialogControl* control(std::uint16_t id) {
        for (StandinDialogControl* control :
             {&window.groupBox, &window.firstButton, &window.secondButton}) {
            if (control->id == id) return control;
        }
        return nullptr;
    }
};

RunningDialog& running(Window dialog) { return *static_cast<RunningDialog*>(dialog); }

bool isLive(const StandinDialogControl& button, A_long id) {
    return button.id == id && button.enabled != 0;
}

template <std::size_t N>
void copyText(char (&to)[N], std::string_view from) {
    to[from.copy(to, N - 1)] = '\0';
}

}  // namespace

bool runDialog(const char*, std::uint16_t, Window parent, DialogProcedure procedure,
               void* creationArgument) {
    auto* window = static_cast<StandinDialogWindow*>(parent);
    if (window == nullptr || window->magic != kStandinDialogMagic || window->run == nullptr) {
        return false;
    }
    // What the template says of the dialog; the texts come with the first message.
    copyText(window->title, "option");
    window->groupBox = {kStandinDialogGroupBox, 1, {}};
    window->firstButton = {kStandinDialogFirstButton, 1, {}};
    window->secondButton = {kStandinDialogSecondButton, 1, {}};

    RunningDialog dialog{*window};
    procedure(&dialog, kMessageInitDialog, 0, reinterpret_cast<std::intptr_t>(creationArgument));
    // The record answers once, with what ends the dialog; only a live button can be that.
    const A_long answer = window->run(window);
    const bool live = isLive(window->firstButton, answer) || isLive(window->secondButton, answer);
    procedure(&dialog, kMessageCommand, live ? static_cast<std::uintptr_t>(answer) : kCloseBox, 0);
    return true;
}

void setDialogData(Window dialog, void* data) { running(dialog).data = data; }

void* dialogData(Window dialog) { return running(dialog).data; }

// There is no screen to be in the middle of.
WindowRect windowRect(Window) { return {}; }

Window parentOf(Window dialog) { return &running(dialog).window; }

void moveWindow(Window, std::int32_t, std::int32_t, std::int32_t, std::int32_t) {}

void setControlText(Window dialog, std::uint16_t control, const char* text) {
    if (StandinDialogControl* found = running(dialog).control(control)) copyText(found->text, text);
}

void enableControl(Window dialog, std::uint16_t control, bool enable) {
    if (StandinDialogControl* found = running(dialog).control(control)) found->enabled = enable;
}

void endDialog(Window) {}  // it is over with its answer

std::string ownModulePath() {
    if (std::getenv("STREAKFALL_OWN_PATH") != nullptr) return environment("STREAKFALL_OWN_PATH");
    Dl_info info{};
    // A function of this file, and so of the module.
    const bool known = ::dladdr(reinterpret_cast<const void*>(&ownModulePath), &info) != 0;
    return known && info.dli_fname != nullptr ? resolved(info.dli_fname) : std::string();
}

bool shiftKeyDown() { return environment("STREAKFALL_SHIFT") == "1"; }

std::string commandLine() {
    std::string given = environment("STREAKFALL_COMMAND_LINE");
    if (!given.empty()) return given;
    const std::string arguments = processArguments();
    std::string line;
    for (std::size_t at = 0; at < arguments.size();) {
        const std::string_view argument = arguments.c_str() + at;
        if (!line.empty()) line += ' ';
        line += quotedIfNeeded(argument);
        at += argument.size() + 1;
    }
    return line;
}

unsigned codePage() {
    constexpr unsigned kUtf8 = 65001;
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const std::string locale = environment(name);
        if (!locale.empty()) return locale.starts_with("ja_JP") ? kCodePageJapanese : kUtf8;
    }
    return kUtf8;
}

}  // namespace streakfall::platform
