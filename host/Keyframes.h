#pragma once

#include <array>
#include <compare>
#include <vector>

#include "hostapi/hostapi.h"

namespace standin {

// A moment in a layer: value / scale seconds, compared exactly.
struct Time {
    A_long value = 0;
    A_u_long scale = 1;

    std::strong_ordering operator<=>(const Time& other) const;
    bool operator==(const Time& other) const { return (*this <=> other) == 0; }
    double seconds() const { return static_cast<double>(value) / scale; }
};

// A parameter's value as the user sees it: a number (a slider's, a checkbox's 0 or 1, an angle's
// degrees), a point in pixels of the full-size layer, or a colour's alpha, red, green and blue from
// 0 to 255. Parts without use are 0.
struct Value {
    std::array<double, 4> part{};

    static Value number(double value) { return {{value, 0, 0, 0}}; }
    static Value point(double x, double y) { return {{x, y, 0, 0}}; }
    static Value color(double red, double green, double blue, double alpha = 255) {
        return {{alpha, red, green, blue}};
    }
    bool operator==(const Value&) const = default;
};

// How a value goes from one key to the next: in a straight line, not at all until the next key,
// or slow at both ends (3 t^2 - 2 t^3 of the way at part t of the time).
enum class Way { line, hold, ease };

// A value over time: one constant, or keys between which it runs as each says of the way behind it.
// Where the host may not interpolate, all hold. A value type.
class Track {
  public:
    Track() = default;
    explicit Track(const Value& constant, bool steps = false);

    // Drops all keys.
    void setConstant(const Value& value);
    // The first key replaces the constant; a key at the time of another replaces that one.
    void setKey(const Time& time, const Value& value, Way behind = Way::line);
    bool keyed() const { return !keys_.empty(); }

    Value at(const Time& time) const;

  private:
    struct Key {
        Time time;
        Value value;
        Way behind;
    };
    Value constant_;
    std::vector<Key> keys_;  // ascending in time, no two alike
    bool steps_ = false;
};

}  // namespace standin
