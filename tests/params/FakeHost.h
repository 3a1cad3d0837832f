// As much of a host as parameters and settings talk to: handles, two suites, the parameter list,
// platform data and the dialog's record.
//
// The youngest one that lives is meant, since handle functions come without a reference. Each
// handle is one block of exactly its size, so that a sanitizer sees one byte too many. At the end
// of its life it checks that nothing of its own is still held.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "hostapi/DialogWindow.h"
#include "hostapi/hostapi.h"
#include "params/ParamTable.h"

namespace streakfall::test {

class FakeHost {
  public:
    FakeHost();
    ~FakeHost();
    FakeHost(const FakeHost&) = delete;
    FakeHost& operator=(const FakeHost&) = delete;

    // What it offers.
    bool renderEngine = false;
    std::string modulePath;
    PF_Err pathCode = PF_Err_NONE;  // beside the path
    int failNewHandleAfter = -1;    // how many handles there are still; negative: no end
    int failLockAfter = -1;
    int failAddAfter = -1;
    int failCheckoutAfter = -1;
    int failCheckin = -1;  // the one that is refused, from 0
    A_long answer = kStandinDialogClose;

    // What it saw.
    std::map<PF_Handle, int> locks;  // every handle that lives, with its locks
    int heldSuites = 0;
    int checkedOut = 0;
    std::vector<PF_ParamDef> added;                        // element i has host index i + 1
    std::vector<std::pair<PF_ParamIndex, bool>> controls;  // enabled or not, in order of update
    StandinDialogWindow window{};

    PF_InData in{};
    PF_OutData out{};

    // The array that a command comes with: the input layer, and the parameters as they were added.
    PF_ParamDef** params();
    PF_ParamDef& param(std::int32_t id) { return *params()[hostIndexOf(id)]; }
    bool enabled(PF_ParamIndex index) const;  // after the last update

    PF_Handle newBlock(const void* bytes, std::size_t size);
    std::vector<unsigned char> bytes(PF_Handle handle) const;

  private:
    static PF_Handle newHandle(A_HandleSize size);
    static void* lock(PF_Handle handle);
    static void unlock(PF_Handle handle);
    static void dispose(PF_Handle handle);
    static A_HandleSize handleSize(PF_Handle handle);

    FakeHost* previous_;
    PF_UtilCallbacks utils_{};
    SPBasicSuite basic_{};
    std::vector<PF_ParamDef> array_;
    std::vector<PF_ParamDef*> pointers_;
};

// The table of a host that is as `host` says at that moment; gone at the end.
class Table {
  public:
    explicit Table(FakeHost& host) { buildParamTable(&host.in); }
    ~Table() { destroyParamTable(); }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;
};

}  // namespace streakfall::test
