#include "FakeHost.h"

#include <cstdarg>
#include <cstdio>

namespace streakfall::test {

namespace {

FakeHost* current = nullptr;

// The first pointer is what a handle's dereference gives.
struct Block {
    void* address;
    std::size_t size;
};

Block& blockOf(PF_Handle handle) { return *reinterpret_cast<Block*>(handle); }

// Counts down to the failing call; from there on every call fails.
bool fails(int& left) {
    if (left < 0) return false;
    return left == 0 || left-- == 0;
}

int print(char* buffer, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsprintf(buffer, format, arguments);
    va_end(arguments);
    return length;
}

}  // namespace

PF_Handle FakeHost::newHandle(A_HandleSize size) {
    if (fails(current->failNewHandleAfter)) return nullptr;
    auto* block = new Block{std::malloc(size), size};
    auto handle = reinterpret_cast<PF_Handle>(block);
    current->locks[handle] = 0;
    return handle;
}

void* FakeHost::lock(PF_Handle handle) {
    EXPECT_TRUE(current->locks.contains(handle));
    if (fails(current->failLockAfter)) return nullptr;
    ++current->locks[handle];
    return blockOf(handle).address;
}

void FakeHost::unlock(PF_Handle handle) {
    ASSERT_TRUE(current->locks.contains(handle));
    EXPECT_GT(current->locks[handle], 0);
    --current->locks[handle];
}

void FakeHost::dispose(PF_Handle handle) {
    ASSERT_TRUE(current->locks.contains(handle));
    EXPECT_EQ(current->locks[handle], 0) << "disposed of while locked";
    current->locks.erase(handle);
    std::free(blockOf(handle).address);
    delete &blockOf(handle);
}

A_HandleSize FakeHost::handleSize(PF_Handle handle) { return blockOf(handle).size; }

FakeHost::FakeHost() : previous_(current) {
    current = this;

    static PF_HandleSuite1 handleSuite{newHandle, lock, unlock, dispose, handleSize, nullptr};
    static PF_ParamUtilsSuite1 paramUtils{};
    paramUtils.PF_UpdateParamUI = [](PF_ProgPtr, PF_ParamIndex index, const PF_ParamDef* def) {
        EXPECT_NE(def, current->params()[index]) << "the host wants a copy";
        current->controls.emplace_back(index, (def->ui_flags & PF_PUI_DISABLED) == 0);
        return PF_Err{PF_Err_NONE};
    };
    static PFAppSuite4 app{};
    app.PF_IsRenderEngine = [](PF_Boolean* answerOut) {
        *answerOut = current->renderEngine;
        return PF_Err{PF_Err_NONE};
    };
    basic_.AcquireSuite = [](const char* name, A_long, const void** suite) -> SPErr {
        const std::string_view wanted = name;
        const void* found = wanted == kPFHandleSuite       ? static_cast<const void*>(&handleSuite)
                            : wanted == kPFParamUtilsSuite ? &paramUtils
                            : wanted == kPFAppSuite        ? static_cast<const void*>(&app)
                                                           : nullptr;
        *suite = found;
        current->heldSuites += found != nullptr;
        return found != nullptr ? PF_Err_NONE : PF_Err_BAD_CALLBACK_PARAM;
    };
    basic_.ReleaseSuite = [](const char*, A_long) -> SPErr { return --current->heldSuites, 0; };

    utils_.host_new_handle = newHandle;
    utils_.host_dispose_handle = dispose;
    utils_.host_get_handle_size = handleSize;
    utils_.ansi.strcpy = std::strcpy;
    utils_.ansi.sprintf = print;
    utils_.get_platform_data = [](PF_ProgPtr, PF_PlatDataID which, void* data) -> PF_Err {
        if (which == PF_PlatData_MAIN_WND) *static_cast<void**>(data) = &current->window;
        if (which == PF_PlatData_RES_FILE_PATH) {
            std::strcpy(static_cast<char*>(data), current->modulePath.c_str());
            return current->pathCode;
        }
        return PF_Err_NONE;
    };

    in.utils = &utils_;
    in.pica_basicP = &basic_;
    in.appl_id = kAppID_FXTC;
    in.version = {13, 29};
    in.inter.add_param = [](PF_ProgPtr, PF_ParamIndex index, PF_ParamDef* def) -> PF_Err {
        EXPECT_EQ(index, -1);
        if (fails(current->failAddAfter)) return PF_Err_INVALID_INDEX;
        current->added.push_back(*def);
        return PF_Err_NONE;
    };
    in.inter.checkout_param = [](PF_ProgPtr, PF_ParamIndex index, A_long, A_long, A_u_long,
                                 PF_ParamDef* def) -> PF_Err {
        *def = *current->params()[index];
        if (fails(current->failCheckoutAfter)) return PF_Err_INVALID_INDEX;
        ++current->checkedOut;
        return PF_Err_NONE;
    };
    in.inter.checkin_param = [](PF_ProgPtr, PF_ParamDef*) -> PF_Err {
        --current->checkedOut;
        return current->failCheckin-- == 0 ? PF_Err_INVALID_CALLBACK : PF_Err_NONE;
    };

    window.magic = kStandinDialogMagic;
    window.run = [](StandinDialogWindow*) { return current->answer; };
}

FakeHost::~FakeHost() {
    EXPECT_EQ(heldSuites, 0);
    EXPECT_EQ(checkedOut, 0);
    for (const auto& [handle, count] : locks) EXPECT_EQ(count, 0) << "a handle is still locked";
    EXPECT_TRUE(locks.empty()) << "a handle is left";
    current = previous_;
}

PF_ParamDef** FakeHost::params() {
    if (array_.empty()) {
        array_.emplace_back();
        array_.insert(array_.end(), added.begin(), added.end());
        for (PF_ParamDef& def : array_) pointers_.push_back(&def);
    }
    return pointers_.data();
}

bool FakeHost::enabled(PF_ParamIndex index) const {
    bool state = true;
    for (const auto& [updated, on] : controls) {
        if (updated == index) state = on;
    }
    return state;
}

PF_Handle FakeHost::newBlock(const void* bytes, std::size_t size) {
    const PF_Handle handle = newHandle(size);
    if (size != 0) std::memcpy(blockOf(handle).address, bytes, size);
    return handle;
}

std::vector<unsigned char> FakeHost::bytes(PF_Handle handle) const {
    const Block& block = blockOf(handle);
    const auto* first = static_cast<const unsigned char*>(block.address);
    return {first, first + block.size};
}

}  // namespace streakfall::test
