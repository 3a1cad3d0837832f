#include "Page.h"

#include <utility>

#include "Failure.h"
#include "OptionsDialog.h"

namespace tool::panel {

using standin::ParamInfo;
using standin::Value;

Page::Page(Studio& studio, Values values, int frame)
    : studio_(studio), values_(std::move(values)), frame_(frame) {
    const std::lock_guard lock(studio_.commands());
    instance_.emplace(studio_.session().makeInstance(studio_.layer()));
    values_.storeIn(*instance_, studio_.params(), studio_.rate());
    goTo(frame);
}

Page::~Page() {
    const std::lock_guard lock(studio_.commands());
    main_.instance.reset();
    thumbnail_.instance.reset();
    instance_.reset();
}

Json Page::show(int frame) {
    const std::scoped_lock lock(mutex_, studio_.commands());
    if (frame != frame_) goTo(frame);
    return stateNow();
}

Json Page::change(const Change& change, int frame) {
    const ParamInfo& param = paramAt(studio_.params(), change.param);
    const Value value = readValue(change.value, param, studio_.layer());
    const std::scoped_lock lock(mutex_, studio_.commands());
    if (frame != frame_) goTo(frame);
    if (change.turn) {
        const auto [last, first] = turns_.emplace(param.index, *change.turn);
        if (!first && *change.turn < last->second) return stateNow();
        last->second = *change.turn;
    }
    const auto before = valuesNow();
    const PF_Err code = instance_->setValue(param.id, value);
    adopt(param, before);
    if (code != PF_Err_NONE)
        fail(Exit::kEffect, "\"{}\": the effect answered the change with code {}", param.name,
             code);
    return stateNow();
}

Json Page::open(Values values, int frame) {
    const std::scoped_lock lock(mutex_, studio_.commands());
    values.storeIn(*instance_, studio_.params(), studio_.rate());
    values_ = std::move(values);
    ++opened_;
    goTo(frame);
    return stateNow();
}

Values Page::values() const {
    const std::lock_guard lock(mutex_);
    return values_;
}

int Page::frame() const {
    const std::lock_guard lock(mutex_);
    return frame_;
}

void Page::close() {
    studio_.queue().leave(main_.slot);
    studio_.queue().leave(thumbnail_.slot);
}

void Page::saveDefaults() {
    changeDefaults([&](OptionsDialog& dialog) { dialog.save(studio_.session().settingsFile()); });
}

void Page::restoreDefaults() {
    changeDefaults(
        [&](OptionsDialog& dialog) { dialog.restore(studio_.session().settingsFile()); });
}

// Nobody draws meanwhile: to see what was stored, the effect announces its parameters anew, and
// what it keeps of them serves all instances.
template <class Action>
void Page::changeDefaults(Action action) {
    const DrawPause pause(studio_.queue());
    const std::scoped_lock lock(mutex_, studio_.commands());
    OptionsDialog dialog(*instance_);
    action(dialog);
}

void Page::goTo(int frame) {
    const FrameRate& rate = studio_.rate();
    instance_->setTime({timeOf(frame, rate, "frame"), rate.timeScale}, rate.timeStep);
    frame_ = frame;
    tellPanel();
}

void Page::tellPanel() {
    if (const PF_Err code = instance_->updatePanel(); code != PF_Err_NONE)
        fail(Exit::kEffect, "the panel's update answered with code {}", code);
}

// What the change did in the instance, the effect's own changes of other parameters included. A key
// that was there keeps its way.
void Page::adopt(const ParamInfo& changed, const std::map<int, Value>& before) {
    const FrameRate& rate = studio_.rate();
    for (const ParamInfo& param : studio_.params()) {
        if (!param.hasValue()) continue;
        const Value now = instance_->value(param.id);
        if (param.index != changed.index && now == before.at(param.index)) continue;
        Setting& setting = values_.of(param);
        if (setting.keys.empty()) {
            setting.constant = now;
            continue;
        }
        Key& key = setting.keys[frame_];
        key.value = now;
        instance_->storeKey(param.id, {timeOf(frame_, rate, param.name), rate.timeScale}, now,
                            key.behind);
    }
}

std::map<int, Value> Page::valuesNow() const {
    std::map<int, Value> values;
    for (const ParamInfo& param : studio_.params())
        if (param.hasValue()) values[param.index] = instance_->value(param.id);
    return values;
}

Json Page::stateNow() const {
    const Params& params = studio_.params();
    Json values = Json::object();
    Json disabled = Json::array();
    for (const ParamInfo& param : params) {
        if (param.hasValue())
            values[std::to_string(param.index)] = valueJson(param, instance_->value(param.id));
        if (!instance_->enabled(param.id)) disabled.push_back(param.index);
    }
    return {{"frame", frame_},
            {"values", std::move(values)},
            {"keys", values_.keysJson(params)},
            {"disabled", std::move(disabled)},
            {"opened", opened_}};
}

}  // namespace tool::panel
