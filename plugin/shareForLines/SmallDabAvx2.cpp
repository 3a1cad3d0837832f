#include "shareForLines/SmallDabAvx2.h"

#include <algorithm>
#include <bit>

#include "shareForLines/CoverageTable.h"
#include "shareForLines/ReplayAvx2.h"
#include "shareForLines/SmallDabBox.h"

// Only what is defined from here on may use the wider instructions.
#pragma GCC push_options
#pragma GCC target("avx2")

namespace streakfall {
namespace {

using namespace avx2;

// The closed form counts in 4096ths of a column.
constexpr double kFine = 4096.0;
// Nearer to a column's edge than this times 1 + 1 / r, in 4096ths, a pixel takes the exact way.
// Single precision holds places in the square, up to 40 pixels from its middle, to 2e-6 pixels on
// each axis; with the rounding of what follows, that moves the closed form by less than 0.3 times
// 1 + 1 / r.
constexpr double kGuard = 0.75;
// Below this radius the closed form is too steep for single precision.
constexpr double kSteepRadius = 0.05;
// Dabs nearer to each other than this, in place and radius, move the closed form by less than a
// thousandth of the guard.
constexpr double kTwin = 1e-9;

// Places in the square are bytes, and compare as signed numbers.
constexpr std::int32_t kMiddle = 64;
constexpr std::int32_t kReach = 32;  // of a box's first pixel from the middle
constexpr std::uint8_t kNowhere = 127;

constexpr std::uint32_t kNoKey = UINT32_MAX;

// Radius in 65536ths: the coverage table's row, and the weight of the next one.
inline std::uint32_t blendKey(double r) { return static_cast<std::uint32_t>(r * 65536.0); }

// Sixteen bytes as words.
inline __m256i widen(const std::uint8_t* bytes) {
    return _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)));
}

// All 32 coverages by column, blended like coverageInColumn. A small dab's row is not the last.
void blendCoverages(std::uint32_t key, std::uint8_t* coverages) {
    const std::uint8_t* row = EdgeCoverageTable[key >> 16];
    const auto weight = static_cast<std::int16_t>(key & 0xFFFF);
    const __m256i weights = _mm256_set1_epi16(weight);
    // A weight of 32768 or more reads as 65536 less; a whole rise makes up for it.
    const __m256i whole = _mm256_set1_epi16(weight < 0 ? -1 : 0);
    const auto blend = [&](const std::uint8_t* from) {
        // low x weightLow + high x weightHigh = low x 65536 + rise x weightHigh
        const __m256i low = widen(from);
        const __m256i rise = _mm256_sub_epi16(widen(from + kCoverageColumns), low);
        const __m256i part =
            _mm256_add_epi16(_mm256_mulhi_epi16(rise, weights), _mm256_and_si256(rise, whole));
        const __m256i rounding = _mm256_srli_epi16(_mm256_mullo_epi16(rise, weights), 15);
        return _mm256_add_epi16(low, _mm256_add_epi16(part, rounding));
    };
    const __m256i halves = _mm256_packus_epi16(blend(row), blend(row + 16));
    _mm256_store_si256(reinterpret_cast<__m256i*>(coverages),
                       _mm256_permute4x64_epi64(halves, 0xD8));
}

// SmallDabBox in lanes: xa, ya, xb, yb. The dab touches the canvas, which keeps them in range.
inline __m128i boxOf(const LineCanvas& canvas, const Dab& dab) {
    const double r = dab.radius;
    const __m256d corners = _mm256_add_pd(_mm256_add_pd(_mm256_setr_pd(0.0, 0.0, 0.5, 0.5),
                                                        _mm256_setr_pd(dab.x, dab.y, dab.x, dab.y)),
                                          _mm256_setr_pd(-r, -r, r, r));
    const __m128i least = _mm_setr_epi32(0, 0, INT32_MIN, INT32_MIN);
    const __m128i most = _mm_setr_epi32(INT32_MAX, INT32_MAX, canvas.width - 1, canvas.height - 1);
    return _mm_min_epi32(_mm_max_epi32(_mm256_cvttpd_epi32(corners), least), most);
}

// True where x or y is set.
inline bool anyAxis(__m128i lanes) { return (_mm_movemask_ps(_mm_castsi128_ps(lanes)) & 3) != 0; }

inline bool isEmpty(__m128i box) {
    return anyAxis(_mm_cmpgt_epi32(box, _mm_shuffle_epi32(box, 0xEE)));
}

// x, y, radius. Not loaded at once: what was written in parts would be waited for.
inline __m256d placeOf(const Dab& dab) { return _mm256_setr_pd(dab.x, dab.y, dab.radius, 0.0); }

// Place and radius of two dabs differ by rounding alone.
inline bool isNear(__m256d one, __m256d other) {
    const __m256d distance = _mm256_andnot_pd(_mm256_set1_pd(-0.0), _mm256_sub_pd(one, other));
    const __m256d near = _mm256_cmp_pd(distance, _mm256_set1_pd(kTwin), _CMP_LE_OQ);
    return (_mm256_movemask_pd(near) & 7) == 7;
}

inline std::uint32_t setOf(__m256i bytes) {
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(bytes));
}

inline __m256i everyByte(std::int32_t value) { return _mm256_set1_epi8(static_cast<char>(value)); }

inline std::int32_t smallestByte(__m256i bytes) {
    const __m128i half =
        _mm_min_epu8(_mm256_castsi256_si128(bytes), _mm256_extracti128_si256(bytes, 1));
    const __m128i words = _mm_min_epu8(half, _mm_srli_epi16(half, 8));
    return _mm_extract_epi16(_mm_minpos_epu16(words), 0);
}

// The exact way: what the dab covers of eight pixels from x on in row y.
__attribute__((noinline)) __m256i exactCoverage(const LineCanvas& canvas, const Dab& dab,
                                                std::int32_t x, std::int32_t y) {
    alignas(32) std::int32_t coverage[kLanes] = {};
    SmallDabBox box;
    box.place(dab.x, dab.y, dab.radius, canvas.width, canvas.height);
    CoverageBlend weights;
    setCoverageBlend(weights, dab.radius);
    DistanceChain chain(box, dab.x, dab.y, dab.radius);
    for (std::int32_t above = box.ya; above < y; ++above) chain.nextRow();
    const std::int32_t last = std::min(box.xb - x, kLanes - 1);
    for (std::int32_t i = box.xa - x; i <= last; ++i) {
        const std::int32_t g = coverageAt(weights, chain.nextPixel());
        if (i >= 0) coverage[i] = g;
    }
    return load(coverage);
}

}  // namespace

// Eight pixels of a row, and what the discs cover of them.
template <class Depth>
struct SmallDabAvx2<Depth>::Block {
    std::int32_t x, y;                     // first pixel
    Discs reaching;                        // discs that may cover one
    __m256 across, down;                   // the pixels, from the middle of the square
    __m256i guard;                         // in 4096ths of a column
    bool exactly;                          // a disc comes near a column's edge
    __m256i largest;                       // by pixel
    alignas(32) __m256i coverage[kDiscs];  // one after the other, by reaching disc

    void cover(const std::array<Disc, kDiscs>& discs) {
        largest = _mm256_setzero_si256();
        __m256i nearest = _mm256_set1_epi32(4095);
        __m256i* next = coverage;
        for (Discs rest = reaching; rest != 0; rest &= rest - 1) {
            const Disc& disc = discs[static_cast<std::size_t>(std::countr_zero(rest))];
            const __m256i fine = fineColumns(disc);
            nearest = _mm256_min_epi32(nearest, pastEdge(fine));
            const __m256i g = coverageOf(disc, fine);
            largest = _mm256_max_epi32(largest, g);
            _mm256_store_si256(next++, g);
        }
        exactly = isNearEdge(nearest);
    }

    bool isNearEdge(const Disc& disc) const { return isNearEdge(pastEdge(fineColumns(disc))); }

  private:
    // Limited to columns 0.5 to 31.5: beyond them there is no edge to miss.
    __m256i fineColumns(const Disc& disc) const {
        const __m256 p = _mm256_sub_ps(across, _mm256_set1_ps(disc.x));
        const __m256 q = _mm256_sub_ps(down, _mm256_set1_ps(disc.y));
        const __m256 square = _mm256_add_ps(_mm256_mul_ps(p, p), _mm256_mul_ps(q, q));
        const __m256 column = _mm256_add_ps(_mm256_mul_ps(square, _mm256_set1_ps(disc.scale)),
                                            _mm256_set1_ps(disc.base));
        const __m256 least = _mm256_set1_ps(static_cast<float>(0.5 * kFine));
        const __m256 most = _mm256_set1_ps(static_cast<float>(31.5 * kFine));
        return _mm256_cvtps_epi32(_mm256_min_ps(_mm256_max_ps(column, least), most));
    }

    // How far behind the start of an edge's guarded zone.
    __m256i pastEdge(__m256i fine) const {
        return _mm256_and_si256(_mm256_add_epi32(fine, guard), _mm256_set1_epi32(4095));
    }
    bool isNearEdge(__m256i past) const {
        return anyLane(_mm256_cmpgt_epi32(_mm256_add_epi32(guard, guard), past));
    }

    __m256i coverageOf(const Disc& disc, __m256i fine) const {
        const __m256i outside =
            _mm256_castps_si256(_mm256_cmp_ps(across, _mm256_set1_ps(disc.right), _CMP_GT_OQ));
        const std::uint8_t* table = disc.coverage->data();
        const __m256i found =
            lookUp(halfTable(table), halfTable(table + 16), _mm256_srli_epi32(fine, 12));
        return _mm256_and_si256(found, _mm256_andnot_si256(outside, _mm256_set1_epi32(255)));
    }
};

template <class Depth>
template <class Pixels>
inline void SmallDabAvx2<Depth>::mergeCovered(Pixels& pixels, const Pixel& pen,
                                              const Block& block) const {
    Replay<Depth> replay(pen, pixels, block.largest);
    if (replay.isNeeded()) {
        const __m256i* coverage = block.coverage;
        for (Discs rest = block.reaching; rest != 0; rest &= rest - 1) {
            replay.paint(*coverage++, discs[static_cast<std::size_t>(std::countr_zero(rest))].dabs);
        }
    }
    pixels = replay.result();
}

// Dab by dab; those of a disc with no pixel near an edge have the coverage that the block knows.
template <class Depth>
template <class Pixels>
void SmallDabAvx2<Depth>::mergeExactly(Pixels& pixels, const LineCanvas& canvas, const Pixel& pen,
                                       const Block& block) const {
    const EightPixels<Depth> eight(pen);
    const __m256i* coverage = block.coverage;
    for (Discs rest = block.reaching; rest != 0; rest &= rest - 1, ++coverage) {
        const auto i = static_cast<std::size_t>(std::countr_zero(rest));
        const bool exactly = steep || block.isNearEdge(discs[i]);
        for (std::size_t k = 0; k < static_cast<std::size_t>(discs[i].dabs); ++k) {
            const Dab& dab = dabs[firstDab[i] + k];
            eight.merge(pixels, eight.alphas(exactly ? exactCoverage(canvas, dab, block.x, block.y)
                                                     : *coverage));
        }
    }
}

template <class Depth>
inline void SmallDabAvx2<Depth>::paintBlock(const LineCanvas& canvas, const Pixel& pen,
                                            const Block& block) const {
    const auto merge = [&](Pixel* place) {
        auto pixels = EightPixels<Depth>::load(place);
        if (steep || block.exactly) [[unlikely]] {
            mergeExactly(pixels, canvas, pen, block);
        } else {
            mergeCovered(pixels, pen, block);
        }
        EightPixels<Depth>::store(place, pixels);
    };
    Pixel* place = canvas.row<Depth>(block.y) + block.x;
    const std::int32_t room = canvas.width - block.x;
    if (room >= kLanes) [[likely]] {
        merge(place);
        return;
    }
    Pixel edge[kLanes] = {};
    std::copy_n(place, room, edge);
    merge(edge);
    std::copy_n(edge, room, place);
}

// row: in the square.
template <class Depth>
void SmallDabAvx2<Depth>::paintRow(const LineCanvas& canvas, const Pixel& pen,
                                   std::int32_t row) const {
    const double guard = kGuard * (1.0 + 1.0 / std::max(thinnest, kSteepRadius));
    const __m256i lefts = load(left.data()), rights = load(right.data());
    const __m256i missed = _mm256_or_si256(_mm256_cmpgt_epi8(load(top.data()), everyByte(row)),
                                           _mm256_cmpgt_epi8(everyByte(row), load(bottom.data())));
    std::int32_t x = smallestByte(_mm256_or_si256(lefts, missed));
    for (Discs rest = ~setOf(missed); rest != 0;) {
        if (canvas.shows.hidesEight(squareX + x, squareY + row)) {
            x += kLanes;
            rest &= ~setOf(_mm256_cmpgt_epi8(everyByte(x), rights));
            continue;
        }
        Block block;
        block.x = squareX + x;
        block.y = squareY + row;
        block.reaching = rest & ~setOf(_mm256_cmpgt_epi8(lefts, everyByte(x + kLanes - 1)));
        block.across = _mm256_add_ps(_mm256_setr_ps(0, 1, 2, 3, 4, 5, 6, 7),
                                     _mm256_set1_ps(static_cast<float>(x - kMiddle)));
        block.down = _mm256_set1_ps(static_cast<float>(row - kMiddle));
        block.guard = _mm256_set1_epi32(static_cast<std::int32_t>(guard) + 1);
        block.cover(discs);
        paintBlock(canvas, pen, block);
        x += kLanes;
        rest &= ~setOf(_mm256_cmpgt_epi8(everyByte(x), rights));
    }
}

template <class Depth>
void SmallDabAvx2<Depth>::prepare() {
    std::uint32_t key = kNoKey;
    Bytes* coverage = coverages.data() - 1;
    for (std::size_t i = 0; i < discCount; ++i) {
        const Dab& dab = dabs[firstDab[i]];
        const double r = dab.radius;
        if (blendKey(r) != key) {
            key = blendKey(r);
            blendCoverages(key, (++coverage)->data());
        }
        // Column: (8 / r) (p^2 + q^2) - 8 r + 16.5
        discs[i] = {static_cast<float>(dab.x - (squareX + kMiddle)),
                    static_cast<float>(dab.y - (squareY + kMiddle)),
                    static_cast<float>(kFine * 8.0 / r),
                    static_cast<float>(kFine * (16.5 - 8.0 * r)),
                    static_cast<float>(right[i] - kMiddle),
                    static_cast<std::int32_t>((i + 1 < discCount ? firstDab[i + 1] : dabCount) -
                                              firstDab[i]),
                    coverage};
    }
}

template <class Depth>
void SmallDabAvx2<Depth>::flush(const LineCanvas& canvas, const Pixel& pen) {
    if (discCount == 0) return;
    prepare();
    // In the order in which the pixels were asked for.
    if (top[0] <= top[discCount - 1]) {
        for (std::int32_t row = firstRow; row <= lastRow; ++row) paintRow(canvas, pen, row);
    } else {
        for (std::int32_t row = lastRow; row >= firstRow; --row) paintRow(canvas, pen, row);
    }
    discCount = dabCount = 0;
}

template <class Depth>
void SmallDabAvx2<Depth>::start(const Dab& dab, __m128i box) {
    squareX = _mm_extract_epi32(box, 0) - kMiddle;
    squareY = _mm_extract_epi32(box, 1) - kMiddle;
    firstRow = lastRow = kMiddle;
    thinnest = dab.radius;
    steep = dab.radius < kSteepRadius;
    top.fill(kNowhere);  // no row reaches a disc that is not there
    // No twin of one before.
    lastKey = kNoKey;
    dabs[0] = dab;
}

// place: the dab's box in the square.
template <class Depth>
bool SmallDabAvx2<Depth>::fits(const Dab& dab, __m128i place) const {
    const __m128i fromMiddle = _mm_sub_epi32(place, _mm_set1_epi32(kMiddle));
    return !anyAxis(_mm_cmpgt_epi32(_mm_abs_epi32(fromMiddle), _mm_set1_epi32(kReach))) &&
           discCount < kDiscs && dabCount < kDabs && (dab.radius < kSteepRadius) == steep;
}

template <class Depth>
void SmallDabAvx2<Depth>::paint(const LineCanvas& canvas, const Pixel& pen, const Dab& dab) {
    const __m128i box = boxOf(canvas, dab);
    if (isEmpty(box)) return;
    const auto inSquare = [&] {
        return _mm_sub_epi32(box, _mm_setr_epi32(squareX, squareY, squareX, squareY));
    };
    if (discCount == 0 || !fits(dab, inSquare())) [[unlikely]] {
        flush(canvas, pen);
        start(dab, box);
    }
    // Without a branch, for whether a dab is a twin is up to rounding. A twin's disc is written
    // once more as it is.
    const __m128i bytes = _mm_shuffle_epi8(inSquare(), _mm_set1_epi32(0x0C080400));
    const auto place = static_cast<std::uint32_t>(_mm_cvtsi128_si32(bytes));
    const std::uint32_t key = blendKey(dab.radius);
    const __m256d its = placeOf(dab);
    const __m256d before = _mm256_loadu_pd(&dabs[std::max<std::size_t>(dabCount, 1) - 1].x);
    const bool twin = (key == lastKey) & (place == lastPlace) & isNear(its, before);
    const std::size_t i = discCount - twin;
    discCount = i + 1;
    firstDab[i] = twin ? firstDab[i] : static_cast<std::uint8_t>(dabCount);
    left[i] = static_cast<std::uint8_t>(place);
    top[i] = static_cast<std::uint8_t>(place >> 8);
    right[i] = static_cast<std::uint8_t>(place >> 16);
    bottom[i] = static_cast<std::uint8_t>(place >> 24);
    firstRow = std::min(firstRow, std::int32_t{top[i]});
    lastRow = std::max(lastRow, std::int32_t{bottom[i]});
    thinnest = std::min(thinnest, dab.radius);
    lastPlace = place;
    lastKey = key;
    _mm256_storeu_pd(&dabs[dabCount++].x, its);
    // A line crosses a row or more with every dab, each far off in memory. By the time that the
    // stretch is painted they are there.
    __builtin_prefetch(canvas.row<Depth>(_mm_extract_epi32(box, 1)) + _mm_extract_epi32(box, 0), 1);
    __builtin_prefetch(canvas.row<Depth>(_mm_extract_epi32(box, 3)) + _mm_extract_epi32(box, 2), 1);
}

template class SmallDabAvx2<Depth8>;
template class SmallDabAvx2<Depth16>;
template class SmallDabAvx2<DepthFloat>;

}  // namespace streakfall

#pragma GCC pop_options
