// Loading and unloading, and calls from threads that the module has not seen.
#include <functional>

#include "LoadedCopy.h"
#include "UseOnce.h"

namespace {

using namespace standin;
using namespace windows_test;

// A thread of the system's own making, as hosts have them.
void onOtherThread(std::function<void()> work) {
    const auto body = [](void* argument) -> DWORD {
        (*static_cast<std::function<void()>*>(argument))();
        return 0;
    };
    const HANDLE thread = CreateThread(nullptr, 0, body, &work, 0, nullptr);
    ASSERT_NE(thread, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
}

DWORD openHandles() {
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
}

class ModuleLifeTest : public ::testing::Test {
  protected:
    ScratchFolder folder;
    std::filesystem::path copy = copyModule(folder);
};

TEST_F(ModuleLifeTest, AHundredLoadsLeaveNothingBehind) {
    // The first ones fill what the system keeps for every file.
    constexpr int kLoads = 100, kSettled = 5;
    DWORD settled = 0;
    for (int i = 0; i < kLoads; ++i) {
        if (i == kSettled) settled = openHandles();
        const LoadedFile file(copy);
        ASSERT_NE(file.entry(), nullptr) << i;
        useOnce(file.entry());
        if (HasFatalFailure()) FAIL() << "at load " << i;
    }
    EXPECT_EQ(GetModuleHandleW(copy.c_str()), nullptr);
    EXPECT_LE(openHandles(), settled + 5);
}

// A host may stop without a word; what the module then still holds is lost, not touched again.
TEST_F(ModuleLifeTest, UnloadedWhileItRuns) {
    for (int i = 0; i < 3; ++i) {
        Host* const host = [&] {
            const LoadedFile file(copy);
            auto* const module = new Module(file.entry());
            auto* const started = new Host(*module);
            EXPECT_EQ(started->start(), 0);
            return started;
        }();
        EXPECT_EQ(GetModuleHandleW(copy.c_str()), nullptr);
        EXPECT_EQ(host->ledger().violationText(), "");
    }
}

TEST_F(ModuleLifeTest, CallsComeFromOtherThreadsThanTheLoadingOne) {
    const LoadedFile file(copy);
    for (int i = 0; i < 20; ++i) onOtherThread([&] { useOnce(file.entry()); });
    Module module(file.entry());
    Host host(module);
    onOtherThread([&] { EXPECT_EQ(host.start(), 0); });
    onOtherThread([&] {
        Instance instance(host, {320, 180});
        EXPECT_EQ(renderFrame(instance, played::requestFor(tinyFrame(), Depth::float32)).code, 0);
    });
    EXPECT_EQ(host.stop(), 0);
    EXPECT_EQ(host.ledger().unbalanced(), "");
}

}  // namespace
