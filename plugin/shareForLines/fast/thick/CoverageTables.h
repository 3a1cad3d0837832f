// CoverageTables: the coverages by column of the radii of many dabs, one table for each change.
//
// Owner: the holder of the dabs. Needs a processor with AVX2.
#pragma once

#include <array>
#include <cstdint>

#include "shareForLines/disc/CoverageTable.h"
#include "shareForLines/simd/Begin.h"
#include "shareForLines/simd/Vectors.h"

namespace streakfall {

template <std::int32_t kDabs>
class CoverageTables {
  public:
    // Forgets all tables; the next dab is the first of at most kDabs.
    void clear() { count = 0; }

    // Where the table of the next dab begins in bytes(), good until clear().
    std::int32_t of(double radius) {
        if (count == 0 || !sameCoverage(last, radius)) {
            CoverageBlend weights;
            setCoverageBlend(weights, radius);
            avx2::coverageTable(weights, tables[static_cast<std::size_t>(count++)].data());
        }
        last = radius;
        return (count - 1) * kCoverageColumns;
    }
    // All tables, one behind the other, and some bytes that may be read behind the last one.
    const std::uint8_t* bytes() const { return tables[0].data(); }

  private:
    // From the last row on all radii share one coverage.
    static bool sameCoverage(double a, double b) {
        return a == b || (a >= kCoverageRows - 1 && b >= kCoverageRows - 1);
    }

    std::int32_t count = 0;
    double last = 0;  // radius of the last dab
    alignas(32) std::array<CoverageByColumn, kDabs + 1> tables;
};

}  // namespace streakfall

#include "shareForLines/simd/End.h"
