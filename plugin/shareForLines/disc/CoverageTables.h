// CoverageTables: the coverages by column of the radii of many dabs, one table for each change.
//
// Owner: the holder of the dabs.
#pragma once

#include <array>
#include <cstdint>

#include "shareForLines/disc/CoverageTable.h"

namespace streakfall {

template <std::int32_t kDabs>
class CoverageTables {
  public:
    // Forgets all tables; the next dab is the first of at most kDabs.
    void clear() { count = 0; }

    // The table of the next dab, good until clear().
    const std::uint8_t* of(double radius) {
        if (count == 0 || !sameCoverage(last, radius)) {
            CoverageBlend weights;
            setCoverageBlend(weights, radius);
            CoverageByColumn& table = tables[static_cast<std::size_t>(count++)];
            for (std::int32_t c = 0; c < kCoverageColumns; ++c) {
                table[static_cast<std::size_t>(c)] =
                    static_cast<std::uint8_t>(coverageInColumn(weights, c));
            }
        }
        last = radius;
        return tables[static_cast<std::size_t>(count - 1)].data();
    }

  private:
    // From the last row on all radii share one coverage.
    static bool sameCoverage(double a, double b) {
        return a == b || (a >= kCoverageRows - 1 && b >= kCoverageRows - 1);
    }

    std::int32_t count = 0;
    double last = 0;  // radius of the last dab
    alignas(32) std::array<CoverageByColumn, kDabs> tables;
};

}  // namespace streakfall
