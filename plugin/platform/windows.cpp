// The system itself behind the door.
//
// A host names files in the process's narrow code page. Where the plug-in lies in a folder whose
// name that code page lacks, "?" comes instead of its characters, which no file name holds; the
// module then goes by its own path, which the system knows in full. All calls are the wide ones.
//
// The texts of the dialog come in code page 932 whatever the process's own is, so that a language
// chosen by the command line can be read on every system.
#include <windows.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/Lock.h"
#include "platform/Platform.h"

namespace streakfall::platform {

namespace {

// Wide characters, and the code page's when they are at most as many.
constexpr std::size_t kLongestPath = 32768;
constexpr std::size_t kLongestControlText = 256;

HMODULE ownModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&ownModule), &module);
    return module;
}

std::wstring ownPath() {
    std::wstring path(kLongestPath, L'\0');
    path.resize(GetModuleFileNameW(ownModule(), path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::wstring extensionOf(const std::wstring& path) {
    const std::size_t point = path.find_last_of(L".\\/");
    return point != path.npos && path[point] == L'.' ? path.substr(point) : std::wstring();
}

// Empty for bytes that are not the code page's, when those are not to be replaced.
std::wstring wide(std::string_view text, DWORD flags = 0) {
    std::wstring result(text.size(), L'\0');
    const int length =
        MultiByteToWideChar(CP_ACP, flags, text.data(), static_cast<int>(text.size()),
                            result.data(), static_cast<int>(result.size()));
    result.resize(static_cast<std::size_t>(length));
    return result;
}

std::string narrow(const std::wstring& text) {
    constexpr std::size_t kMostBytes = 4;  // of a character in any code page
    std::string result(kMostBytes * text.size(), '\0');
    const int length =
        WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), result.data(),
                            static_cast<int>(result.size()), nullptr, nullptr);
    result.resize(static_cast<std::size_t>(length));
    return result;
}

// The file that a host or the module names: the module's own, or one beside it.
std::wstring systemPath(const char* file) {
    const std::wstring path = wide(file, MB_ERR_INVALID_CHARS);
    if (!path.empty() && path.find(L'?') == path.npos) return path;
    const std::wstring own = ownPath();
    return own.substr(0, own.size() - extensionOf(own).size()) + extensionOf(wide(file));
}

static_assert(sizeof(SRWLOCK) == sizeof(void*));
SRWLOCK* slim(void*& word) { return reinterpret_cast<SRWLOCK*>(&word); }

HWND handle(Window window) { return static_cast<HWND>(window); }

}  // namespace

void Lock::lock() { AcquireSRWLockExclusive(slim(word_)); }

void Lock::unlock() { ReleaseSRWLockExclusive(slim(word_)); }

std::uintptr_t threadNumber() { return GetCurrentThreadId(); }

std::int32_t profileInt(const char* section, const char* key, std::int32_t fallback,
                        const char* file) {
    return static_cast<std::int32_t>(GetPrivateProfileIntW(wide(section).c_str(), wide(key).c_str(),
                                                           fallback, systemPath(file).c_str()));
}

std::size_t profileString(const char* section, const char* key, const char* fallback,
                          std::span<char> buffer, const char* file) {
    std::wstring value(buffer.size(), L'\0');
    value.resize(GetPrivateProfileStringW(
        wide(section).c_str(), wide(key).c_str(), wide(fallback).c_str(), value.data(),
        static_cast<DWORD>(value.size()), systemPath(file).c_str()));
    const std::size_t length = narrow(value).copy(buffer.data(), buffer.size() - 1);
    buffer[length] = '\0';
    return length;
}

bool writeProfileString(const char* section, const char* key, const char* text, const char* file) {
    return WritePrivateProfileStringW(wide(section).c_str(), wide(key).c_str(), wide(text).c_str(),
                                      systemPath(file).c_str()) != FALSE;
}

bool deleteFile(const char* file) { return DeleteFileW(systemPath(file).c_str()) != FALSE; }

bool runDialog(const char* modulePath, std::uint16_t templateId, Window parent,
               DialogProcedure procedure, void* creationArgument) {
    if (parent != nullptr && !IsWindow(handle(parent))) return false;
    HMODULE module = GetModuleHandleW(systemPath(modulePath).c_str());
    // A host may tell another path than the one that it loaded from, or none.
    if (module == nullptr || *modulePath == '\0') module = ownModule();
    return DialogBoxParamW(module, MAKEINTRESOURCEW(templateId), handle(parent),
                           reinterpret_cast<DLGPROC>(procedure),
                           reinterpret_cast<LPARAM>(creationArgument)) >= 0;
}

void setDialogData(Window dialog, void* data) {
    SetWindowLongPtrW(handle(dialog), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(data));
}

void* dialogData(Window dialog) {
    return reinterpret_cast<void*>(GetWindowLongPtrW(handle(dialog), GWLP_USERDATA));
}

WindowRect windowRect(Window window) {
    RECT rect{};
    // Without a parent the screen is what a dialog is centred on.
    GetWindowRect(window != nullptr ? handle(window) : GetDesktopWindow(), &rect);
    return {rect.left, rect.top, rect.right, rect.bottom};
}

Window parentOf(Window dialog) { return GetParent(handle(dialog)); }

void moveWindow(Window window, std::int32_t x, std::int32_t y, std::int32_t width,
                std::int32_t height) {
    MoveWindow(handle(window), x, y, width, height, TRUE);
}

void setControlText(Window dialog, std::uint16_t control, const char* text) {
    wchar_t converted[kLongestControlText];
    const bool whole =
        MultiByteToWideChar(kCodePageJapanese, 0, text, -1, converted, std::size(converted)) > 0;
    if (whole) {
        SetDlgItemTextW(handle(dialog), control, converted);
    } else {
        SetDlgItemTextA(handle(dialog), control, text);
    }
}

void enableControl(Window dialog, std::uint16_t control, bool enable) {
    EnableWindow(GetDlgItem(handle(dialog), control), enable);
}

void endDialog(Window dialog) { EndDialog(handle(dialog), 0); }

std::string ownModulePath() { return narrow(ownPath()); }

bool shiftKeyDown() { return GetKeyState(VK_SHIFT) < 0; }

std::string commandLine() { return GetCommandLineA(); }

unsigned codePage() { return GetACP(); }

}  // namespace streakfall::platform
