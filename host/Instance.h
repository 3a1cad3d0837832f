#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/Definitions.h"
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
// Ids must be those of the effect's parameters, else std::invalid_argument.
class Instance {
  public:
    // As applied by the user: sequence setup, then the first update of the panel. Throws
    // EffectError when the setup fails.
    Instance(Host& host, LayerSize layer);
    // As loaded from a project: sequence resetup from the flat bytes.
    Instance(Host& host, LayerSize layer, const std::vector<std::uint8_t>& flat);
    // Sets down, when that was not done.
    ~Instance();
    Instance(Instance&& other) noexcept;
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    Host& host() const { return host_; }
    LayerSize layer() const { return layer_; }

    // --- values -------------------------------------------------------------------------------
    // The moment that the panel shows.
    void setTime(const Time& now, A_long step = 1);
    // As the user turns a control: the value is stored, as a key when there are keys, a supervised
    // parameter's change is told to the effect, which may change other values, and the panel is
    // updated. The first code that is not 0.
    PF_Err setValue(A_long id, const Value& value);
    // As a script or a project sets it: stored without a command and without a look at ranges.
    void storeValue(A_long id, const Value& value);
    void storeKey(A_long id, const Time& time, const Value& value, Way behind = Way::line);
    // All back to the defaults, without a command.
    void storeDefaults();
    Value value(A_long id) const { return value(id, now_); }
    Value value(A_long id, const Time& time) const;

    // --- panel --------------------------------------------------------------------------------
    PF_Err updatePanel();
    bool enabled(A_long id) const;
    // Times that the effect told the state of a control since the instance was made.
    long controlUpdates() const { return controlUpdates_; }

    // --- commands of the instance ---------------------------------------------------------------
    // The options dialog at the panel's time; the host's DialogTalk answers for the user.
    PF_Err openDialog();
    // The out flags as the effect wants them now. Throws EffectError.
    PF_OutFlags queryDynamicFlags();
    // Flattens, and leaves the flat data in place until resetup makes it live again.
    PF_Err flatten();
    PF_Err resetup();
    // Flattens, takes the bytes and, as a host that goes on, sets up again. Throws EffectError.
    std::vector<std::uint8_t> save();
    // A second instance with the same values: flattened, then both are set up again. Throws
    // EffectError.
    Instance duplicate();
    PF_Err setDown();

    // What the sequence data's handle holds; empty when there is none.
    std::vector<std::uint8_t> sequenceBytes() const;
    // Puts these bytes in place of the sequence data, as a damaged project would; none: a null
    // handle.
    void replaceSequenceData(const std::vector<std::uint8_t>& bytes);

    // --- for commands ---------------------------------------------------------------------------
    // Time and layer of a command, and the sequence data.
    void describeTo(Command& command) const;
    // A parameter's definition with its value at that time; 513 for an index without one.
    PF_Err fillDefinition(A_long index, const Time& time, const PixelScale& scale,
                          PF_ParamDef& definition) const;
    PF_Err updateControl(A_long index, const PF_ParamDef& definition);

  private:
    const ParamInfo& info(A_long id) const;
    Track& track(A_long id);
    PF_Err play(PF_Cmd command);
    PF_Err playWithParams(PF_Cmd command, void* extra);
    PF_Err tellChange(const ParamInfo& changed);
    void adoptChanges(const std::vector<PF_ParamDef>& params);
    void disposeSequence();
    void disposeKeptFlat();

    Host& host_;
    LayerSize layer_;
    Time now_{0, 24};
    A_long timeStep_ = 1;
    std::vector<Track> tracks_;             // by host index less one
    std::vector<PF_ParamUIFlags> uiFlags_;  // likewise
    long controlUpdates_ = 0;
    PF_Handle sequence_ = nullptr;
    std::vector<PF_Handle> keptFlat_;  // see HostOffer::disposesFlat
    bool live_ = true;                 // not yet set down
};

// The `params` of a command: the input layer's definition, then each parameter's at that time.
class ParamArray {
  public:
    ParamArray(const Instance& instance, A_long count, const Time& time, const PixelScale& scale);

    PF_ParamDef** pointers() { return pointers_.data(); }
    PF_LayerDef& inputLayer() { return definitions_[0].u.ld; }
    const std::vector<PF_ParamDef>& definitions() const { return definitions_; }

  private:
    std::vector<PF_ParamDef> definitions_;
    std::vector<PF_ParamDef*> pointers_;
};

}  // namespace standin
