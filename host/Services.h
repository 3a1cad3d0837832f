#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "host/Faults.h"
#include "host/Host.h"
#include "host/HostOffer.h"
#include "host/Ledger.h"
#include "host/SuiteTables.h"
#include "hostapi/DialogWindow.h"
#include "hostapi/hostapi.h"

namespace standin {

// What an effect can reach of a host at any time, also outside a command: suites, handles, and the
// books behind them. Owner: the host and, until the effect is set down, the module it called first.
// Safe from any thread, but for the dialog.
class Services {
  public:
    // Throws std::runtime_error when too many hosts live at once.
    static std::shared_ptr<Services> open(const HostOffer& offer, const std::string& modulePath);
    ~Services();
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

    const HostOffer& offer() const { return offer_; }
    Faults& faults() { return faults_; }
    Ledger& ledger() { return *ledger_; }
    const std::shared_ptr<Ledger>& sharedLedger() const { return ledger_; }
    DialogTalk& dialog() { return dialog_; }

    // As in_data has them.
    SPBasicSuite* basicSuite() { return offer_.basicSuite ? &tables_.basic : nullptr; }
    PF_UtilCallbacks* utilCallbacks() { return &tables_.utils; }

    // Lock-free, so that a signal handler may set it.
    std::atomic<bool>& cancelled() { return cancelled_; }

    // --- the services themselves ----------------------------------------------------------------
    SPErr acquireSuite(const A_char* suiteName, A_long version, const void** suite);
    SPErr releaseSuite(const A_char* suiteName, A_long version);
    PF_Handle newHandle(A_HandleSize size);
    void* lockHandle(PF_Handle handle);
    void unlockHandle(PF_Handle handle);
    void disposeHandle(PF_Handle handle);
    A_HandleSize handleSize(PF_Handle handle);
    PF_Err resizeHandle(A_HandleSize size, PF_Handle* handle);
    PF_Err pixelFormat(const PF_EffectWorld* world, PF_PixelFormat* format);
    PF_Err isRenderEngine(PF_Boolean* answer);
    PF_Err platformData(PF_PlatDataID which, void* data);

  private:
    Services(const HostOffer& offer, std::string modulePath);
    const void* suiteTable(const std::string& suiteName, A_long version) const;
    PF_Err tellNarrowPath(void* data) const;
    StandinDialogWindow* dialogWindow();
    static A_long runDialog(StandinDialogWindow* window);

    HostOffer offer_;
    std::string modulePath_;
    Faults faults_;
    std::shared_ptr<Ledger> ledger_ = std::make_shared<Ledger>();
    DialogTalk dialog_;
    StandinDialogWindow window_{};
    std::atomic<bool> cancelled_{false};
    SuiteTables tables_{};
    int slot_ = -1;
};

}  // namespace standin
