#include "shareForLines/simd/ArcEnds.h"

#include <immintrin.h>

#include <bit>
#include <cmath>

#include "shareForLines/simd/Begin.h"

namespace streakfall {
namespace {

// The four diagonals side by side in lanes: the last steps of the walk before each of them, and the
// first one behind.
class Diagonals {
  public:
    // Of arcs 0, 2, 4 and 6: the last pixel that the walk passes. Dab coordinates.
    struct Pixels {
        alignas(16) std::int32_t x[4], y[4];
    };
    Pixels before;
    // Of these pixels and those behind: whether the circle passes within one and its pair, and
    // then that one, and the way on behind the pair.
    bool anyOutside;
    DabPixel outside, inward;

    Diagonals(const DabCentre& c, double r)
        : centre(c),
          radius(r),
          limit(static_cast<std::int32_t>(std::ceil(256.0 * (r * r)))),
          k(static_cast<std::int32_t>(decisionConstant(c, r))) {
        __m128i x, y;
        start(x, y);
        for (;;) {
            const __m128i runs = running(x, y);
            if (_mm_testz_si128(runs, runs) != 0) break;
            step(kFirst, runs, x, y);
        }
        _mm_store_si128(reinterpret_cast<__m128i*>(before.x), x);
        _mm_store_si128(reinterpret_cast<__m128i*>(before.y), y);
        anyOutside = false;
        findOutside(kFirst, x, y);
        step(kSecond, _mm_set1_epi32(-1), x, y);
        findOutside(kSecond, x, y);
    }

  private:
    // The last steps of an arc that are walked, in pixels along one axis.
    static constexpr double kLastSteps = 1.5;
    static constexpr double kDiagonal = 0.70710678118654752;  // sine and cosine of 45 degrees

    // Four arcs of kArcs, by lane.
    struct ArcLanes {
        alignas(16) std::int32_t whileU[4]{}, whileV[4]{}, majorX[4]{}, majorY[4]{};
        alignas(16) std::int32_t minorX[4]{}, minorY[4]{}, minorWhenInside[4]{};
        alignas(16) std::int32_t outwardX[4]{}, outwardY[4]{};

        explicit constexpr ArcLanes(int first) {
            for (int i = 0; i < 4; ++i) {
                const Arc& arc = kArcs[first + 2 * i];
                whileU[i] = arc.whileU;
                whileV[i] = arc.whileV;
                majorX[i] = arc.majorX;
                majorY[i] = arc.majorY;
                minorX[i] = arc.minorX;
                minorY[i] = arc.minorY;
                minorWhenInside[i] = arc.minorWhenInside ? -1 : 0;
                outwardX[i] = arc.outwardX;
                outwardY[i] = arc.outwardY;
            }
        }
    };
    static const ArcLanes kFirst, kSecond;

    static __m128i lanes(const std::int32_t* v) {
        return _mm_load_si128(reinterpret_cast<const __m128i*>(v));
    }
    static __m256d roundHalfUp(__m256d v) {
        return _mm256_floor_pd(_mm256_add_pd(v, _mm256_set1_pd(0.5)));
    }

    // A pixel of the walk shortly before each diagonal: on the flat arcs the row follows from the
    // column, on the steep ones the column from the row.
    void start(__m128i& x, __m128i& y) const {
        const double cx = centre.cx, cy = centre.cy;
        const double reach = radius * kDiagonal - kLastSteps;
        const __m256d major = _mm256_setr_pd(cx, cy, cx, cy);
        const __m256d minor = _mm256_setr_pd(cy, cx, cy, cx);
        const __m256d known =
            roundHalfUp(_mm256_add_pd(major, _mm256_setr_pd(reach, -reach, -reach, reach)));
        const __m256d from = _mm256_sub_pd(known, major);
        const __m256d across = _mm256_sqrt_pd(
            _mm256_sub_pd(_mm256_set1_pd(radius * radius), _mm256_mul_pd(from, from)));
        const __m256d side = _mm256_setr_pd(0.0, 0.0, -0.0, -0.0);
        const __m256d found = roundHalfUp(_mm256_add_pd(minor, _mm256_xor_pd(across, side)));
        x = _mm256_cvttpd_epi32(_mm256_blend_pd(known, found, 0xA));
        y = _mm256_cvttpd_epi32(_mm256_blend_pd(found, known, 0xA));
    }

    __m128i offsetU(__m128i x) const {
        return _mm_sub_epi32(_mm_slli_epi32(x, 4), _mm_set1_epi32(centre.fx));
    }
    __m128i offsetV(__m128i y) const {
        return _mm_sub_epi32(_mm_slli_epi32(y, 4), _mm_set1_epi32(centre.fy));
    }

    // Arc::runs of the first arcs.
    __m128i running(__m128i x, __m128i y) const {
        const __m128i along = _mm_add_epi32(_mm_mullo_epi32(lanes(kFirst.whileU), offsetU(x)),
                                            _mm_mullo_epi32(lanes(kFirst.whileV), offsetV(y)));
        return _mm_cmpgt_epi32(along, _mm_setzero_si128());
    }

    // Arc::step in these lanes. The decision value of a large dab has 32 bits.
    void step(const ArcLanes& arcs, __m128i wanted, __m128i& x, __m128i& y) const {
        const auto midpoint = [](__m128i at, const std::int32_t* major, const std::int32_t* minor) {
            return _mm_add_epi32(_mm_slli_epi32(_mm_add_epi32(at, lanes(major)), 1), lanes(minor));
        };
        const __m128i p = midpoint(x, arcs.majorX, arcs.minorX);
        const __m128i q = midpoint(y, arcs.majorY, arcs.minorY);
        // 16 p^2 - 4 fx p = 4 p (4 p - fx)
        const auto part = [](__m128i v, std::int32_t f) {
            const __m128i four = _mm_slli_epi32(v, 2);
            return _mm_mullo_epi32(four, _mm_sub_epi32(four, _mm_set1_epi32(f)));
        };
        const __m128i d =
            _mm_add_epi32(_mm_add_epi32(part(p, centre.fx), part(q, centre.fy)), _mm_set1_epi32(k));
        const __m128i minor = _mm_cmpeq_epi32(_mm_srai_epi32(d, 31), lanes(arcs.minorWhenInside));
        const auto advance = [&](__m128i at, const std::int32_t* major, const std::int32_t* other) {
            const __m128i by = _mm_add_epi32(lanes(major), _mm_and_si128(minor, lanes(other)));
            return _mm_add_epi32(at, _mm_and_si128(wanted, by));
        };
        x = advance(x, arcs.majorX, arcs.minorX);
        y = advance(y, arcs.majorY, arcs.minorY);
    }

    // There is one at most.
    void findOutside(const ArcLanes& arcs, __m128i x, __m128i y) {
        const int between = _mm_movemask_ps(_mm_castsi128_ps(straddles(arcs, x, y)));
        if (between == 0xF) return;
        const int i = std::countr_one(static_cast<unsigned>(between));
        alignas(16) std::int32_t px[4], py[4];
        _mm_store_si128(reinterpret_cast<__m128i*>(px), x);
        _mm_store_si128(reinterpret_cast<__m128i*>(py), y);
        anyOutside = true;
        outside = {px[i], py[i]};
        inward = {-arcs.outwardX[i], -arcs.outwardY[i]};
    }

    // All ones where the circle passes between the pixel and its pair.
    __m128i straddles(const ArcLanes& arcs, __m128i x, __m128i y) const {
        const __m128i isInside = inside(x, y);
        // Outward from inside, else inward.
        const auto pair = [&](__m128i at, const std::int32_t* outward) {
            const __m128i by = lanes(outward);
            const __m128i back = _mm_sub_epi32(_mm_setzero_si128(), by);
            return _mm_add_epi32(at, _mm_blendv_epi8(back, by, isInside));
        };
        return _mm_xor_si128(isInside, inside(pair(x, arcs.outwardX), pair(y, arcs.outwardY)));
    }
    __m128i inside(__m128i x, __m128i y) const {
        const __m128i u = offsetU(x), v = offsetV(y);
        return _mm_cmpgt_epi32(_mm_set1_epi32(limit),
                               _mm_add_epi32(_mm_mullo_epi32(u, u), _mm_mullo_epi32(v, v)));
    }

    const DabCentre& centre;
    const double radius;
    const std::int32_t limit;  // u^2 + v^2 is inside below it
    const std::int32_t k;
};

constexpr Diagonals::ArcLanes Diagonals::kFirst{0};
constexpr Diagonals::ArcLanes Diagonals::kSecond{1};

}  // namespace

ArcEnds::ArcEnds(const DabCentre& centre, double r) {
    const Diagonals at(centre, r);
    flatBottom = {at.before.x[3] + 1, at.before.x[0]};
    flatTop = {at.before.x[2], at.before.x[1] - 1};
    steepRight = {at.before.y[1], at.before.y[0] - 1};
    steepLeft = {at.before.y[2] + 1, at.before.y[3]};
    isOdd = at.anyOutside;
    if (!isOdd) return;
    extra = at.outside;
    once = {extra.x + 2 * at.inward.x, extra.y + 2 * at.inward.y};
}

}  // namespace streakfall

#include "shareForLines/simd/End.h"
