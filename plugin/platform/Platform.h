// The one door to the system: settings file, dialog, keys, command line, code page.
//
// windows.cpp calls the functions of the system that each operation is named after; portable.cpp
// gives the same effects where that system is absent. Texts are in the process's narrow code page,
// but for the dialog's, which are in code page 932, of which ASCII is a part.
// Nothing here holds a lock: the settings file belongs to one command at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace streakfall::platform {

// Settings file: a text of sections, "[name]", with lines "key=value" below each. Names and keys
// are compared without case and without the blanks around them, and the first match counts.
// Comments (";"), sections that are not asked for and their line ends survive every write.

// The key's value as a decimal integer modulo 2^32; text that does not begin with a number is 0.
// `fallback` when the file, the section or the key is absent.
std::int32_t profileInt(const char* section, const char* key, std::int32_t fallback,
                        const char* file);

// Puts the key's value, or `fallback` when it is absent, into the buffer, cut to fit and ended by
// a zero. Returns the length without the zero. The buffer must have room for one character.
std::size_t profileString(const char* section, const char* key, const char* fallback,
                          std::span<char> buffer, const char* file);

// Replaces the key's value, or adds it with its section and file where they are absent. False when
// that failed, which leaves the file as it was.
bool writeProfileString(const char* section, const char* key, const char* text, const char* file);

bool deleteFile(const char* file);

// Dialog. The messages and ids are those of the system whose dialogs these are.

inline constexpr std::uint32_t kMessageInitDialog = 0x0110;  // second argument: creation argument
inline constexpr std::uint32_t kMessageCommand = 0x0111;     // first argument, low 16 bits: id
inline constexpr std::uint16_t kCloseBox = 2;

// A dialog or its parent; valid while the dialog runs. Opaque, as its owner is the system.
using Window = void*;

// Answers a dialog's messages; true means that the message was taken. On 64-bit Windows this is
// the system's own dialog procedure type.
using DialogProcedure = std::intptr_t (*)(Window dialog, std::uint32_t message,
                                          std::uintptr_t first, std::intptr_t second);

// Runs the dialog made from a template of the module at `modulePath` until endDialog. False when
// there is no such dialog, or nothing to show it on.
bool runDialog(const char* modulePath, std::uint16_t templateId, Window parent,
               DialogProcedure procedure, void* creationArgument);

// For the procedure, while the dialog runs.
void setDialogData(Window dialog, void* data);
void* dialogData(Window dialog);
// Screen pixels; right and bottom do not belong to the window.
struct WindowRect {
    std::int32_t left = 0, top = 0, right = 0, bottom = 0;
};
WindowRect windowRect(Window window);
Window parentOf(Window dialog);
void moveWindow(Window window, std::int32_t x, std::int32_t y, std::int32_t width,
                std::int32_t height);
void setControlText(Window dialog, std::uint16_t control, const char* text);
void enableControl(Window dialog, std::uint16_t control, bool enable);
void endDialog(Window dialog);

// Process.

// The full path of the file that this code was loaded from; empty where the system does not tell.
std::string ownModulePath();
bool shiftKeyDown();
// The whole text, with the program's own name in front.
std::string commandLine();
// The multibyte code page; kCodePageJapanese is the one that anybody asks about.
inline constexpr unsigned kCodePageJapanese = 932;
unsigned codePage();

}  // namespace streakfall::platform
