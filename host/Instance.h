#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/Host.h"
#include "host/Keyframes.h"

namespace standin {

class Command;

// A command of the effect answered with a code that leaves no way on.
struct EffectError : std::runtime_error {
    EffectError(const std::string& what, PF_Err errorCode)
        : std::runtime_error(what + ": code " + std::to_string(errorCode)), code(errorCode) {}
    PF_Err code;
};

struct LayerSize {
    A_long width = 640;  // pixels at full size
    A_long height = 360;
};

// One effect on one layer: its values over time, its sequence data, and its panel. Plays the life
// that a real host gives it. Owner: the program; the host outlives it. One thread at a time.
class Instance {
  public:
    // As applied by the user: sequence setup, then the first update of the panel. Throws
    // EffectError when the setup fails.
    Instance(Host& host, LayerSize layer);
    // As loaded from a project: sequence resetup from the flat bytes.
    Instance(Host& host, LayerSize layer, const std::vector<std::uint8_t>& flat);
    // Set down, when that was not done.
    ~Instance();
    Instance(Instance&& other) noexcept;
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    Host& host() { return host_; }
    LayerSize layer() const { return layer_; }

    // --- values -------------------------------------------------------------------------------
    // The moment that the panel shows.
    void setTime(const Time& now, A_long step = 1) {
        now_ = now;
        timeStep_ = step;
    }
    // As the user turns a control: the value is stored, a supervised parameter's change is told to
    // the effect, which may change other values, and the panel is updated. The command's code.
    PF_Err setValue(A_long id, const Value& value);
    // As a script or a project sets it: stored without a command.
    void storeValue(A_long id, const Value& value);
    void storeKey(A_long id, const Time& time, const Value& value);
    Value value(A_long id) const { return value(id, now_); }
    Value value(A_long id, const Time& time) const;
    // Back to all defaults, without a command.
    void storeDefaults();

    // --- panel --------------------------------------------------------------------------------
    PF_Err updatePanel();
    bool enabled(A_long id) const;
    // Times that the effect told the state of a control since the instance was made.
    long panelUpdates() const { return panelUpdates_; }

    // --- commands of the instance ---------------------------------------------------------------
    // The options dialog at the panel's time; the host's DialogTalk answers for the user.
    PF_Err openDialog();
    // The out flags as the effect wants them now.
    PF_OutFlags queryDynamicFlags();
    // Flattens, takes the bytes and, as a host that goes on, sets up again.
    std::vector<std::uint8_t> save();
    // Flattens only, and leaves the flat data in place; resetup makes it live again.
    PF_Err flatten();
    PF_Err resetup();
    // A second instance with the same values: flattened, then both are set up again.
    Instance duplicate();
    PF_Err setDown();

    // A copy of what the sequence data handle holds; empty when there is none.
    std::vector<std::uint8_t> sequenceBytes() const;
    // Puts a handle of these bytes in place of the sequence data, as a damaged project would.
    void replaceSequenceData(const std::vector<std::uint8_t>& bytes);
    void dropSequenceData();

    // --- for the commands' callbacks ------------------------------------------------------------
    // The definition with the value at that time, points scaled by the two ratios.
    PF_Err fillDefinition(A_long index, const Time& time, const PF_RationalScale& scaleX,
                          const PF_RationalScale& scaleY, PF_ParamDef& definition) const;
    PF_Err updateControl(A_long index, const PF_ParamDef& definition);
    // All definitions at the panel's time, the input layer first, as the `params` of a command.
    std::vector<PF_ParamDef> definitions(const Time& time, const PF_RationalScale& scaleX,
                                         const PF_RationalScale& scaleY) const;

  private:
    friend class FrameRender;
    Instance(Host& host, LayerSize layer, PF_Handle sequence);

    const ParamInfo& info(A_long id) const;
    void makeTracks();
    PF_Err setUp();
    PF_Err play(PF_Cmd command, std::vector<PF_ParamDef>* params = nullptr, void* extra = nullptr,
                PF_OutData* out = nullptr);
    void adoptChanges(const std::vector<PF_ParamDef>& params);

    Host& host_;
    LayerSize layer_;
    Time now_{0, 24};
    A_long timeStep_ = 1;
    std::vector<Track> tracks_;             // by host index less one
    std::vector<PF_ParamUIFlags> uiFlags_;  // likewise
    long panelUpdates_ = 0;
    PF_Handle sequence_ = nullptr;
    bool live_ = false;  // between setup and setdown
};

}  // namespace standin
