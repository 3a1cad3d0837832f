#include "params/UiReactions.h"

#include <initializer_list>

#include "params/HostQuestions.h"
#include "params/ParamTable.h"
#include "params/SequenceData.h"
#include "share/util/SuiteCache.h"

namespace streakfall {

namespace {

constexpr std::int32_t kStartPoint = paramIdOf("Start Point");
constexpr std::int32_t kEndPoint = paramIdOf("End Point");
constexpr std::int32_t kLinkEndPoint = paramIdOf("Link End Point");
constexpr std::int32_t kEnableTaper = paramIdOf("Enable Taper");
constexpr std::int32_t kFixBandForm = paramIdOf("Fix Band Form");
constexpr std::int32_t kArchRate = paramIdOf("Arch Rate");

// The panel of one command: the values that it shows and the way to its controls.
class Panel {
  public:
    Panel(const PF_InData* inData, PF_ParamDef* const* params)
        : inData_(inData),
          params_(params),
          suites_(inData->pica_basicP),
          paramUtils_(suites_.get<PF_ParamUtilsSuite1>()) {}

    bool isOn(std::int32_t id) const { return params_[hostIndexOf(id)]->u.bd.value != 0; }

    void enable(std::int32_t id, bool enable) const { enableIndex(hostIndexOf(id), enable); }

    // The host wants a changed copy; its own definition keeps its state.
    void enableIndex(PF_ParamIndex index, bool enable) const {
        PF_ParamDef def = *params_[index];
        def.ui_flags = enable ? def.ui_flags & ~PF_PUI_DISABLED : def.ui_flags | PF_PUI_DISABLED;
        paramUtils_.PF_UpdateParamUI(inData_->effect_ref, index, &def);
    }

    // Lets the controls that a switch governs live or not.
    void follow(std::int32_t switchId, std::initializer_list<std::int32_t> controls) const {
        const bool on = isOn(switchId);
        for (const std::int32_t id : controls) enable(id, on);
    }

  private:
    const PF_InData* inData_;
    PF_ParamDef* const* params_;
    AEUtil::SuiteCache suites_;
    const PF_ParamUtilsSuite1& paramUtils_;
};

void applyRules(const Panel& panel) {
    panel.follow(paramIdOf("Repeat"),
                 {paramIdOf("Random Repeat Num"), paramIdOf("Repeat Interval")});
    panel.follow(paramIdOf("Enable In/Out"),
                 {paramIdOf("Start Thickness"), paramIdOf("Start Length"),
                  paramIdOf("End Thickness"), paramIdOf("End Length")});
    panel.follow(paramIdOf("Use Start/End Opacity"),
                 {paramIdOf("Start Opacity"), paramIdOf("End Opacity"),
                  paramIdOf("Opacity Center Position")});
    panel.follow(kEnableTaper,
                 {paramIdOf("Taper"), kArchRate, kFixBandForm, paramIdOf("Base Length")});
    // Comes behind the rule of the whole group and overrules it: a fixed band has no arch.
    panel.enable(kArchRate, panel.isOn(kEnableTaper) && !panel.isOn(kFixBandForm));
    panel.follow(
        paramIdOf("Enable Wave"),
        {paramIdOf("Wave Amount"), paramIdOf("Wave Amount Random"), paramIdOf("Wave Length"),
         paramIdOf("Wave Length Random"), paramIdOf("Wave Phase"), paramIdOf("Wave Phase Random")});
}

void rememberStartPoint(const PF_InData* inData, const PF_PointDef& start) {
    if (inData->sequence_data == nullptr) return;
    const LockedBlock block(inData, inData->sequence_data);
    SequenceState* state = block.liveState();
    if (state == nullptr) return;
    state->startPointMemoX = start.x_value;
    state->startPointMemoY = start.y_value;
    state->startPointKnown = 1;
}

// 16.16 numbers wrap around like every 32-bit number of the host.
PF_Fixed wrappedSum(PF_Fixed a, PF_Fixed b) {
    return static_cast<PF_Fixed>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
PF_Fixed wrappedDifference(PF_Fixed a, PF_Fixed b) {
    return static_cast<PF_Fixed>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

// The memo stays: the update that follows the change brings it up to date.
void moveEndPoint(const SequenceState& memo, const PF_PointDef& start, PF_ParamDef& endPoint) {
    const PF_Fixed dx = wrappedDifference(start.x_value, memo.startPointMemoX);
    const PF_Fixed dy = wrappedDifference(start.y_value, memo.startPointMemoY);
    if (dx == 0 && dy == 0) return;
    PF_PointDef& end = endPoint.u.td;
    end.x_value = wrappedSum(end.x_value, dx);
    end.y_value = wrappedSum(end.y_value, dy);
    endPoint.uu.change_flags |= PF_ChangeFlag_CHANGED_VALUE;
}

}  // namespace

PF_Err updateParamsUI(const PF_InData* inData, const PF_OutData* outData,
                      PF_ParamDef* const* params) {
    const bool renderEngine = isRenderEngine(inData);
    const Panel panel(inData, params);
    if (renderEngine) {
        for (PF_ParamIndex i = 1; i < outData->num_params; ++i) panel.enableIndex(i, false);
        return PF_Err_NONE;
    }
    applyRules(panel);
    rememberStartPoint(inData, params[hostIndexOf(kStartPoint)]->u.td);
    return PF_Err_NONE;
}

PF_Err userChangedParam(const PF_InData* inData, PF_ParamDef* const* params,
                        const PF_UserChangedParamExtra* extra) {
    if (isRenderEngine(inData)) return PF_Err_NONE;
    if (params[hostIndexOf(kLinkEndPoint)]->u.bd.value == 0) return PF_Err_NONE;
    if (extra->param_index != hostIndexOf(kStartPoint)) return PF_Err_NONE;
    if (inData->sequence_data == nullptr) return PF_Err_NONE;

    const LockedBlock block(inData, inData->sequence_data);
    const SequenceState* state = block.liveState();
    if (state != nullptr && state->startPointKnown == 1) {
        moveEndPoint(*state, params[hostIndexOf(kStartPoint)]->u.td,
                     *params[hostIndexOf(kEndPoint)]);
    }
    return PF_Err_NONE;
}

}  // namespace streakfall
