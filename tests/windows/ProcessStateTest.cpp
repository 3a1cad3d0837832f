// A host's process is not the module's: what is the process's own must be the same while the module
// is loaded and used, and when it is gone.
// clang-format off
#include <windows.h>
#include <tlhelp32.h>  // wants the one above
// clang-format on

#include <clocale>
#include <iterator>
#include <ostream>

#include "LoadedCopy.h"
#include "UseOnce.h"

namespace {

using namespace windows_test;

LONG CALLBACK passOn(EXCEPTION_POINTERS*) { return EXCEPTION_CONTINUE_SEARCH; }

// A handler's record begins with its links to the next and the one before, in a ring.
std::size_t vectoredHandlers() {
    void* const own = AddVectoredExceptionHandler(0, passOn);
    std::size_t count = 0;
    for (void* record = *static_cast<void**>(own); record != own;
         record = *static_cast<void**>(record)) {
        ++count;
    }
    RemoveVectoredExceptionHandler(own);
    return count;
}

std::size_t threads() {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    std::size_t count = 0;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
        count += entry.th32OwnerProcessID == GetCurrentProcessId();
    }
    CloseHandle(snapshot);
    return count;
}

void* lastResort() {
    const LPTOP_LEVEL_EXCEPTION_FILTER filter = SetUnhandledExceptionFilter(nullptr);
    SetUnhandledExceptionFilter(filter);
    return reinterpret_cast<void*>(filter);
}

struct ProcessState {
    std::size_t handlers = vectoredHandlers();
    std::size_t threadCount = threads();
    void* filter = lastResort();
    std::string locale = std::setlocale(LC_ALL, nullptr);
    LCID threadLocale = GetThreadLocale();
    UINT errorMode = GetErrorMode();
    unsigned vectorControl = __builtin_ia32_stmxcsr() & ~0x3Fu;  // without the sticky flags

    bool operator==(const ProcessState&) const = default;
    friend void PrintTo(const ProcessState& state, std::ostream* out) {
        *out << state.handlers << " handlers, " << state.threadCount << " threads, filter "
             << state.filter << ", locale " << state.locale << ", " << state.threadLocale
             << ", error mode " << state.errorMode << ", vector control " << state.vectorControl;
    }
};

TEST(ProcessStateTest, IsTheSameWhileTheModuleIsUsedAndAfter) {
    const ScratchFolder folder;
    const std::filesystem::path copy = copyModule(folder);
    // The system starts threads of its own at the first use of some of its services, and keeps
    // them.
    useOnce(LoadedFile(copy).entry());
    const ProcessState before;
    {
        const LoadedFile file(copy);
        EXPECT_EQ(ProcessState(), before) << "loaded";
        useOnce(file.entry());
        EXPECT_EQ(ProcessState(), before) << "used";
    }
    EXPECT_EQ(GetModuleHandleW(copy.c_str()), nullptr);
    EXPECT_EQ(ProcessState(), before) << "unloaded";
}

// The look at the handlers sees one.
TEST(ProcessStateTest, AHandlerIsSeen) {
    const ProcessState before;
    void* const handler = AddVectoredExceptionHandler(1, passOn);
    EXPECT_EQ(ProcessState().handlers, before.handlers + 1);
    RemoveVectoredExceptionHandler(handler);
    EXPECT_EQ(ProcessState(), before);
}

}  // namespace
