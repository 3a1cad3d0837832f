// ThickRun: large dabs one after the other along a path, held until they are painted as one body.
//
// Owner: the painter of thick strokes. Needs a processor with AVX2.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "shareForLines/canvas/CanvasView.h"
#include "shareForLines/fast/thick/ThickBounds.h"
#include "shareForLines/fast/thick/ThickDabs.h"
#include "shareForLines/path/LineWalk.h"

namespace streakfall {

template <class Depth>
class ThickRun {
  public:
    using Channel = typename Depth::Channel;

    // known: outlives it.
    explicit ThickRun(KnownArcEnds& known) : dabs(known) {}

    bool empty() const { return count == 0; }
    void clear() { count = 0; }
    // Adds a dab. `straightLine`: no wave. False when it cannot go into this run; an empty one
    // takes any.
    bool add(const Dab& dab, Channel alpha, bool straightLine);

    std::span<const Dab> held() const { return {all.data(), static_cast<std::size_t>(count)}; }
    bool isStraight() const { return straight; }
    // y is the major axis.
    bool isSteep() const { return steep; }
    // 1 or -1 when alphas rise or fall along the way, else 0.
    std::int32_t rises() const { return rising; }
    Channel highestAlpha() const {
        return rising < 0 ? alphas[0] : alphas[static_cast<std::size_t>(count - 1)];
    }

    // Works out `dabs` and `bounds` of what is held.
    void place(const CanvasView& canvas);

    ThickDabs dabs;
    ThickBounds bounds;

  private:
    bool goesOn(const Dab& dab) const;

    bool straight = true;
    bool steep = false;
    double advance = 0.0;  // sign of the way along the major axis; 0 before the second dab
    std::int32_t count = 0;
    std::int32_t rising = 0;
    std::array<Dab, ThickDabs::kCapacity> all;
    std::array<Channel, ThickDabs::kCapacity> alphas;
    std::array<std::int32_t, ThickDabs::kCapacity> payloads;
};

}  // namespace streakfall
