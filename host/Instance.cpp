#include "host/Instance.h"

#include <cstring>
#include <utility>

#include "host/Command.h"
#include "host/Handles.h"

namespace standin {
namespace {

void require(PF_Cmd command, PF_Err code) {
    if (code) {
        throw EffectError("the effect's " + commandName(command), code);
    }
}

}  // namespace

Instance::Instance(Host& host, LayerSize layer) : host_(host), layer_(layer) {
    storeDefaults();
    const PF_Err code = play(PF_Cmd_SEQUENCE_SETUP);
    live_ = code == PF_Err_NONE;
    require(PF_Cmd_SEQUENCE_SETUP, code);
    updatePanel();
}

Instance::Instance(Host& host, LayerSize layer, const std::vector<std::uint8_t>& flat)
    : host_(host), layer_(layer) {
    storeDefaults();
    replaceSequenceData(flat);
    const PF_Err code = resetup();
    if (code) {
        live_ = false;
        disposeSequence();
    }
    require(PF_Cmd_SEQUENCE_RESETUP, code);
    updatePanel();
}

Instance::~Instance() { setDown(); }

Instance::Instance(Instance&& other) noexcept
    : host_(other.host_),
      layer_(other.layer_),
      now_(other.now_),
      timeStep_(other.timeStep_),
      tracks_(std::move(other.tracks_)),
      uiFlags_(std::move(other.uiFlags_)),
      controlUpdates_(other.controlUpdates_),
      sequence_(std::exchange(other.sequence_, nullptr)),
      keptFlat_(std::exchange(other.keptFlat_, {})),
      live_(std::exchange(other.live_, false)) {}

// --- values
// ---------------------------------------------------------------------------------------

void Instance::setTime(const Time& now, A_long step) {
    now_ = now;
    timeStep_ = step;
}

const ParamInfo& Instance::info(A_long id) const {
    const ParamInfo* found = host_.param(id);
    if (!found) {
        throw std::invalid_argument("the effect has no parameter of id " + std::to_string(id));
    }
    return *found;
}

Track& Instance::track(A_long id) { return tracks_[info(id).index - 1]; }

void Instance::storeValue(A_long id, const Value& value) { track(id).setConstant(value); }

void Instance::storeKey(A_long id, const Time& time, const Value& value, Way behind) {
    track(id).setKey(time, value, behind);
}

void Instance::storeDefaults() {
    tracks_.clear();
    uiFlags_.clear();
    for (const ParamInfo& param : host_.params()) {
        Value value = param.defaultValue;
        if (param.type == PF_Param_POINT) {
            value = Value::point(value.part[0] * layer_.width / 100,
                                 value.part[1] * layer_.height / 100);
        }
        tracks_.emplace_back(value, param.steps());
        uiFlags_.push_back(param.uiFlags);
    }
}

Value Instance::value(A_long id, const Time& time) const {
    return tracks_[info(id).index - 1].at(time);
}

PF_Err Instance::setValue(A_long id, const Value& value) {
    const ParamInfo& changed = info(id);
    Track& values = track(id);
    if (values.keyed()) {
        values.setKey(now_, value);
    } else {
        values.setConstant(value);
    }
    if (changed.supervised()) {
        if (host_.offer().resetsUpBeforeChange) {
            save();
        }
        if (const PF_Err code = tellChange(changed)) {
            return code;
        }
    }
    return updatePanel();
}

PF_Err Instance::tellChange(const ParamInfo& changed) {
    PF_UserChangedParamExtra extra{changed.index};
    return playWithParams(PF_Cmd_USER_CHANGED_PARAM, &extra);
}

void Instance::adoptChanges(const std::vector<PF_ParamDef>& params) {
    for (std::size_t i = 1; i < params.size(); ++i) {
        if (params[i].uu.change_flags & PF_ChangeFlag_CHANGED_VALUE) {
            const Value value = takeValue(params[i], {});
            Track& values = tracks_[i - 1];
            if (values.keyed()) {
                values.setKey(now_, value);
            } else {
                values.setConstant(value);
            }
        }
    }
}

PF_Err Instance::fillDefinition(A_long index, const Time& time, const PixelScale& scale,
                                PF_ParamDef& definition) const {
    if (index < 1 || index > static_cast<A_long>(tracks_.size())) {
        return PF_Err_INVALID_INDEX;
    }
    definition = host_.params()[index - 1].definition;
    // From here on the first word says what the effect changed, and no longer the id.
    constexpr A_long kDirt = 0x5A5A5A00;
    definition.uu.change_flags = host_.offer().dirtyChangeWords ? kDirt : PF_ChangeFlag_NONE;
    definition.ui_flags = uiFlags_[index - 1];
    putValue(definition, tracks_[index - 1].at(time), scale);
    return PF_Err_NONE;
}

ParamArray::ParamArray(const Instance& instance, A_long count, const Time& time,
                       const PixelScale& scale)
    : definitions_(static_cast<std::size_t>(count)) {
    pointers_.push_back(&definitions_[0]);
    for (A_long i = 1; i < count; ++i) {
        instance.fillDefinition(i, time, scale, definitions_[i]);
        pointers_.push_back(&definitions_[i]);
    }
}

// --- panel
// ----------------------------------------------------------------------------------------

PF_Err Instance::updatePanel() {
    if (!(host_.global().outFlags & PF_OutFlag_SEND_UPDATE_PARAMS_UI)) {
        return PF_Err_NONE;
    }
    return playWithParams(PF_Cmd_UPDATE_PARAMS_UI, nullptr);
}

bool Instance::enabled(A_long id) const {
    return !(uiFlags_[info(id).index - 1] & PF_PUI_DISABLED);
}

PF_Err Instance::updateControl(A_long index, const PF_ParamDef& definition) {
    if (index < 1 || index > static_cast<A_long>(tracks_.size()) ||
        definition.param_type != host_.params()[index - 1].type) {
        host_.ledger().violation("update of control " + std::to_string(index) +
                                 ", which is none or of another kind");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    uiFlags_[index - 1] = definition.ui_flags;
    ++controlUpdates_;
    return PF_Err_NONE;
}

// --- commands
// -------------------------------------------------------------------------------------

void Instance::describeTo(Command& command) const {
    command.in.current_time = now_.value;
    command.in.time_step = timeStep_;
    command.in.local_time_step = timeStep_;
    command.in.time_scale = now_.scale;
    command.in.width = layer_.width;
    command.in.height = layer_.height;
    command.in.extent_hint = {0, 0, layer_.width, layer_.height};
    using Place = HostOffer::SequencePlace;
    const Place place = host_.offer().sequencePlace;
    command.in.sequence_data = place == Place::outData ? nullptr : sequence_;
    command.out.sequence_data = place == Place::inData ? nullptr : sequence_;
}

PF_Err Instance::play(PF_Cmd cmd) {
    Command command(host_, this);
    describeTo(command);
    const PF_Err code = command.run(cmd);
    if (!code) {
        const bool silent = host_.offer().sequencePlace == HostOffer::SequencePlace::inData &&
                            !command.out.sequence_data;
        sequence_ = silent ? sequence_ : command.out.sequence_data;
    }
    return code;
}

PF_Err Instance::playWithParams(PF_Cmd cmd, void* extra) {
    Command command(host_, this);
    describeTo(command);
    ParamArray params(*this, host_.global().numParams, now_, {});
    const PF_Err code = command.run(cmd, params.pointers(), nullptr, extra);
    adoptChanges(params.definitions());
    return code;
}

PF_Err Instance::openDialog() { return playWithParams(PF_Cmd_DO_DIALOG, nullptr); }

PF_OutFlags Instance::queryDynamicFlags() {
    Command command(host_, this);
    describeTo(command);
    require(PF_Cmd_QUERY_DYNAMIC_FLAGS, command.run(PF_Cmd_QUERY_DYNAMIC_FLAGS));
    return command.out.out_flags;
}

PF_Err Instance::flatten() { return play(PF_Cmd_SEQUENCE_FLATTEN); }

// The flat handle is the host's; when the effect puts another in its place it is disposed of here.
PF_Err Instance::resetup() {
    const PF_Handle flat = sequence_;
    const PF_Err code = play(PF_Cmd_SEQUENCE_RESETUP);
    if (sequence_ != flat && handles::alive(flat)) {
        keptFlat_.push_back(flat);
    }
    if (host_.offer().disposesFlat) {
        disposeKeptFlat();
    }
    return code;
}

std::vector<std::uint8_t> Instance::save() {
    require(PF_Cmd_SEQUENCE_FLATTEN, flatten());
    std::vector<std::uint8_t> flat = sequenceBytes();
    require(PF_Cmd_SEQUENCE_RESETUP, resetup());
    return flat;
}

Instance Instance::duplicate() {
    Instance copy(host_, layer_, save());
    copy.now_ = now_;
    copy.timeStep_ = timeStep_;
    copy.tracks_ = tracks_;
    copy.updatePanel();
    return copy;
}

PF_Err Instance::setDown() {
    if (!live_) {
        return PF_Err_NONE;
    }
    live_ = false;
    const PF_Err code = play(PF_Cmd_SEQUENCE_SETDOWN);
    sequence_ = nullptr;
    disposeKeptFlat();
    return code;
}

// --- sequence data
// ----------------------------------------------------------------------------------

std::vector<std::uint8_t> Instance::sequenceBytes() const { return handles::bytes(sequence_); }

void Instance::replaceSequenceData(const std::vector<std::uint8_t>& bytes) {
    disposeSequence();
    if (bytes.empty()) {
        return;
    }
    sequence_ = handles::create(host_.services()->sharedLedger(), bytes.size());
    if (!sequence_) {
        throw std::bad_alloc();
    }
    std::memcpy(*sequence_, bytes.data(), bytes.size());
}

void Instance::disposeKeptFlat() {
    for (const PF_Handle flat : std::exchange(keptFlat_, {})) {
        handles::dispose(flat, host_.ledger());
    }
}

void Instance::disposeSequence() {
    if (sequence_) {
        handles::dispose(std::exchange(sequence_, nullptr), host_.ledger());
    }
}

}  // namespace standin
