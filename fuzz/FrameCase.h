// One input of the fuzzer `parameters` as text that a person can read and write: a line for each
// value that is not at its default,
//
//   Frame Depth=16
//   Thickness=max
//   Start Point=-32768,nan
//
// with "min" and "max" of the valid range, "nan", "inf", and numbers. What cannot be read is passed
// over. The frame's own values ("Frame Width") are brought into their ranges; those of the
// parameters go to the effect as they are.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/FrameRender.h"
#include "validate/Random.h"

namespace fuzz {

// What the values of a case are for. Owner: the fuzzer, for the life of the process.
class FrameFields {
  public:
    explicit FrameFields(const standin::Host& host);

    std::size_t size() const { return fields_.size(); }
    // The frame's come first, with id 0. Every one has a range to choose from.
    const standin::ParamInfo& operator[](std::size_t i) const { return fields_[i]; }

  private:
    std::vector<standin::ParamInfo> fields_;
};

class FrameCase {
  public:
    FrameCase(const FrameFields& fields, std::string_view text);

    std::string text() const;

    standin::LayerSize layer() const;
    standin::FrameRequest request() const;
    void storeIn(standin::Instance& instance) const;

    // Other values for some, or now and then for all.
    void change(validate::Random& random);
    // Takes about half of what the other has.
    void takeFrom(const FrameCase& other, validate::Random& random);

  private:
    void readLine(std::string_view line);
    void changeOne(std::size_t i, validate::Random& random);
    int frameValue(std::size_t i) const;

    const FrameFields& fields_;
    std::vector<std::optional<standin::Value>> values_;  // none: the default
};

}  // namespace fuzz
