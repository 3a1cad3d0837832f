// RunOfDabs: large dabs one after the other along a straight line, at most about a pixel apart.
//
// Owner: the run's painter; about 100 KiB, used again by the next run of the line.
#pragma once

#include <array>
#include <cstdint>

#include "shareForLines/CoverageTables.h"
#include "shareForLines/LargeDabShape.h"
#include "shareForLines/LineWalk.h"
#include "shareForLines/Range.h"

namespace streakfall {

class RunOfDabs {
  public:
    static constexpr std::int32_t kCapacity = 512;
    static constexpr double kMaxStep = 1.05;    // from dab to dab, pixels
    static constexpr double kMaxGrowth = 0.75;  // of the radius, from dab to dab

    struct Entry {
        LargeDabShape shape;
        Dab dab;
        std::int32_t times;            // dabs in a row with the same effect
        const std::uint8_t* coverage;  // by column
    };

    // Direction of the line, a unit vector.
    RunOfDabs(double directionX, double directionY) : ux(directionX), uy(directionY) {}

    // Takes a large dab. False when it does not go on from the one before, or is irregular, or
    // the run is full.
    bool add(const Dab& dab);
    void clear() { size = 0; }

    std::int32_t count() const { return size; }
    const Entry& operator[](std::int32_t k) const { return entries[static_cast<std::size_t>(k)]; }
    double directionX() const { return ux; }
    double directionY() const { return uy; }
    double widest() const { return largest; }  // radius
    double narrowest() const { return smallest; }
    bool hasHollow() const { return anyHollow; }

    // Pixels along the line from the first dab, and across it, of a place.
    double along(double x, double y) const {
        return (x - entries[0].dab.x) * ux + (y - entries[0].dab.y) * uy;
    }
    double across(double x, double y) const {
        return (y - entries[0].dab.y) * ux - (x - entries[0].dab.x) * uy;
    }
    // The dabs whose middles lie between these places along the line, and a few more.
    Range between(double fromAlong, double toAlong) const;
    // The dabs that may touch row y, or the pixels from (x, y) to (x + columns - 1, y).
    Range nearRow(std::int32_t y) const;
    Range nearPixels(std::int32_t x, std::int32_t y, std::int32_t columns) const;

  private:
    // What a dab touches beyond its radius, with room for a quantised centre.
    static constexpr double kReach = 1.2;

    bool goesOn(const Dab& dab, const Entry& before) const;
    void countSteps(const Dab& dab);

    double ux, uy;
    std::int32_t size = 0;
    double largest = 0, smallest = 0;
    bool anyHollow = false;
    std::array<Entry, kCapacity> entries;
    CoverageTables<kCapacity> tables;
    // First dab at each whole step along the line.
    std::array<std::int16_t, kCapacity + 2> firstAtStep;
    std::int32_t steps = 0;
};

}  // namespace streakfall
