#include "host/Services.h"

#include <cstring>
#include <stdexcept>

#include "host/Handles.h"
#include "host/PathText.h"
#include "host/Worlds.h"

namespace standin {
namespace {

std::string suiteLabel(const std::string& suiteName, A_long version) {
    return "\"" + suiteName + "\" " + std::to_string(version);
}

void clear(StandinDialogControl& control, A_long id) {
    control = {};
    control.id = id;
    control.enabled = 1;
}

// Paths go out in an array of fixed size, with the zero.
template <class Text>
PF_Err tellPath(const Text& path, void* data) {
    if (path.size() >= kPFPlatDataPathRoom) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    auto* const out = static_cast<typename Text::value_type*>(data);
    out[path.copy(out, path.size())] = 0;
    return PF_Err_NONE;
}

}  // namespace

Services::Services(const HostOffer& offer, std::string modulePath)
    : offer_(offer), modulePath_(std::move(modulePath)) {}

std::shared_ptr<Services> Services::open(const HostOffer& offer, const std::string& modulePath) {
    std::shared_ptr<Services> services(
        new Services(offer, offer.modulePath.empty() ? modulePath : offer.modulePath));
    services->slot_ = suiteSlots::take(*services, services->tables_);
    if (services->slot_ < 0) {
        throw std::runtime_error("too many hosts at once");
    }
    return services;
}

Services::~Services() {
    if (slot_ >= 0) {
        suiteSlots::leave(slot_);
    }
}

const void* Services::suiteTable(const std::string& suiteName, A_long version) const {
    const struct {
        const char* name;
        A_long version;
        bool offered;
        const void* table;
    } suites[] = {
        {kPFHandleSuite, kPFHandleSuiteVersion, offer_.handleSuite, &tables_.handle},
        {kPFWorldSuite, kPFWorldSuiteVersion1, offer_.worldSuite1, &tables_.world1},
        {kPFWorldSuite, kPFWorldSuiteVersion2, offer_.worldSuite2, &tables_.world2},
        {kPFFillMatteSuite, kPFFillMatteSuiteVersion, offer_.fillMatteSuite, &tables_.fillMatte},
        {kPFWorldTransformSuite, kPFWorldTransformSuiteVersion, offer_.worldTransformSuite,
         &tables_.worldTransform},
        {kPFParamUtilsSuite, kPFParamUtilsSuiteVersion, offer_.paramUtilsSuite,
         &tables_.paramUtils},
        {kPFAppSuite, kPFAppSuiteVersion, offer_.appSuite, &tables_.app},
    };
    for (const auto& suite : suites) {
        if (suiteName == suite.name && version == suite.version) {
            return suite.offered ? suite.table : nullptr;
        }
    }
    return nullptr;
}

// The out pointer stays untouched on failure, as callers may not rely on it.
SPErr Services::acquireSuite(const A_char* suiteName, A_long version, const void** suite) {
    if (const PF_Err planned = faults_.onCall(CallKind::acquireSuite)) {
        return planned;
    }
    const void* table = suiteTable(suiteName, version);
    if (!table) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    ledger_->lend(Loan::suite, suiteLabel(suiteName, version));
    *suite = table;
    return PF_Err_NONE;
}

// Counts as given back even when it is made to fail: the effect has done its part.
SPErr Services::releaseSuite(const A_char* suiteName, A_long version) {
    const PF_Err planned = faults_.onCall(CallKind::releaseSuite);
    ledger_->giveBack(Loan::suite, suiteLabel(suiteName, version));
    return planned;
}

PF_Handle Services::newHandle(A_HandleSize size) {
    return faults_.onCall(CallKind::newHandle) ? nullptr : handles::create(ledger_, size);
}

void* Services::lockHandle(PF_Handle handle) {
    return faults_.onCall(CallKind::lockHandle) ? nullptr : handles::lock(handle, *ledger_);
}

void Services::unlockHandle(PF_Handle handle) {
    faults_.onCall(CallKind::unlockHandle);
    handles::unlock(handle, *ledger_, offer_.moveUnlockedHandles);
}

void Services::disposeHandle(PF_Handle handle) {
    faults_.onCall(CallKind::disposeHandle);
    handles::dispose(handle, *ledger_);
}

A_HandleSize Services::handleSize(PF_Handle handle) {
    return faults_.onCall(CallKind::handleSize) ? 0 : handles::size(handle, *ledger_);
}

PF_Err Services::resizeHandle(A_HandleSize size, PF_Handle* handle) {
    return handles::resize(*handle, size, *ledger_);
}

PF_Err Services::pixelFormat(const PF_EffectWorld* world, PF_PixelFormat* format) {
    if (const PF_Err planned = faults_.onCall(CallKind::getPixelFormat)) {
        return planned;
    }
    const auto depth = depthOf(*world);
    if (!depth) {
        ledger_->violation("pixel format of a world that is not alive");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    *format = standin::pixelFormat(*depth);
    return PF_Err_NONE;
}

PF_Err Services::isRenderEngine(PF_Boolean* answer) {
    if (const PF_Err planned = faults_.onCall(CallKind::isRenderEngine)) {
        return planned;
    }
    *answer = offer_.renderEngine ? 1 : 0;
    return PF_Err_NONE;
}

PF_Err Services::platformData(PF_PlatDataID which, void* data) {
    if (const PF_Err planned = faults_.onCall(CallKind::getPlatformData)) {
        return planned;
    }
    switch (which) {
        case PF_PlatData_MAIN_WND: {
            void* window = offer_.mainWindow ? offer_.mainWindow : dialogWindow();
            std::memcpy(data, &window, sizeof window);
            return PF_Err_NONE;
        }
        case PF_PlatData_EXE_FILE_PATH:
        case PF_PlatData_RES_FILE_PATH:
            return tellNarrowPath(data);
        case PF_PlatData_EXE_FILE_PATH_W:
        case PF_PlatData_RES_FILE_PATH_W:
            return tellPath(widePath(modulePath_), data);
        default:
            return PF_Err_BAD_CALLBACK_PARAM;
    }
}

PF_Err Services::tellNarrowPath(void* data) const {
    using Answer = HostOffer::PathAnswer;
    switch (offer_.pathAnswer) {
        case Answer::nothing:
            return PF_Err_NONE;
        case Answer::foreignBytes:  // no text in UTF-8, nor in code page 932
            return tellPath(std::string("/nowhere/\xFF\xA0\x80/\x81"), data);
        case Answer::told:
        case Answer::toldBesideCode:
            break;
    }
    const PF_Err told = tellPath(narrowPath(modulePath_), data);
    return offer_.pathAnswer == Answer::told ? told : PF_Err{PF_Err_INVALID_CALLBACK};
}

StandinDialogWindow* Services::dialogWindow() {
    window_ = {};
    window_.magic = kStandinDialogMagic;
    clear(window_.groupBox, kStandinDialogGroupBox);
    clear(window_.firstButton, kStandinDialogFirstButton);
    clear(window_.secondButton, kStandinDialogSecondButton);
    window_.run = runDialog;
    window_.host = this;
    return &window_;
}

A_long Services::runDialog(StandinDialogWindow* window) {
    DialogTalk& talk = static_cast<Services*>(window->host)->dialog_;
    ++talk.shown;
    talk.seen = *window;
    for (const StandinDialogControl* button : {&window->firstButton, &window->secondButton}) {
        if (talk.answer == button->id && button->enabled) {
            return talk.answer;
        }
    }
    return kStandinDialogClose;
}

}  // namespace standin
