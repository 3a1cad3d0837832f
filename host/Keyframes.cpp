#include "host/Keyframes.h"

#include <algorithm>

namespace standin {

std::strong_ordering Time::operator<=>(const Time& other) const {
    const std::int64_t mine = std::int64_t{value} * other.scale;
    const std::int64_t theirs = std::int64_t{other.value} * scale;
    return mine <=> theirs;
}

Track::Track(const Value& constant, bool steps) : constant_(constant), steps_(steps) {}

void Track::setConstant(const Value& value) {
    keys_.clear();
    constant_ = value;
}

void Track::setKey(const Time& time, const Value& value, Way behind) {
    const auto place =
        std::lower_bound(keys_.begin(), keys_.end(), time,
                         [](const Key& key, const Time& sought) { return key.time < sought; });
    if (place != keys_.end() && place->time == time) {
        *place = {time, value, behind};
    } else {
        keys_.insert(place, {time, value, behind});
    }
}

Value Track::at(const Time& time) const {
    if (keys_.empty()) {
        return constant_;
    }
    const auto after =
        std::upper_bound(keys_.begin(), keys_.end(), time,
                         [](const Time& sought, const Key& key) { return sought < key.time; });
    if (after == keys_.begin()) {
        return keys_.front().value;
    }
    const Key& from = *(after - 1);
    if (after == keys_.end() || steps_ || from.behind == Way::hold || from.time == time) {
        return from.value;
    }
    double part =
        (time.seconds() - from.time.seconds()) / (after->time.seconds() - from.time.seconds());
    if (from.behind == Way::ease) {
        part = part * part * (3 - 2 * part);
    }
    Value value;
    for (std::size_t i = 0; i < value.part.size(); ++i) {
        value.part[i] = from.value.part[i] + (after->value.part[i] - from.value.part[i]) * part;
    }
    return value;
}

}  // namespace standin
