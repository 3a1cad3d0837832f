#include "shareForLines/fast/thin/ThinStroke.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "shareForLines/disc/CoverageTable.h"
#include "shareForLines/disc/SmallDabBox.h"
#include "shareForLines/simd/ByteSet.h"
#include "shareForLines/simd/FourNumbers.h"
#include "shareForLines/simd/Lanes.h"
#include "shareForLines/simd/Replay.h"

// Only what is defined from here on may use the wider instructions.
#include "shareForLines/simd/Begin.h"

namespace streakfall {
namespace {

using namespace lanes;
using avx2::Box, avx2::coverageTable, avx2::EightPixels, avx2::Replay, avx2::Triple;

// The closed form counts in 4096ths of a column.
constexpr double kFine = 4096.0;
constexpr std::int32_t kPastEdge = 4095;  // bits: how far past a column's edge
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
constexpr std::int32_t kReach = 32;           // of a box's first pixel from the middle
constexpr std::uint32_t kNowhere = 127 << 8;  // a box whose first row no row reaches

constexpr std::uint32_t kNoKey = UINT32_MAX;

// Radius in 65536ths: the coverage table's row, and the weight of the next one.
inline std::uint32_t blendKey(double r) { return static_cast<std::uint32_t>(r * 65536.0); }

// The exact way: what the dab covers of eight pixels from x on in row y.
__attribute__((noinline)) Ints exactCoverage(const CanvasView& canvas, const Dab& dab,
                                             std::int32_t x, std::int32_t y) {
    alignas(32) std::int32_t coverage[kCount] = {};
    SmallDabBox box;
    box.place(dab.x, dab.y, dab.radius, canvas.width, canvas.height);
    CoverageBlend weights;
    setCoverageBlend(weights, dab.radius);
    DistanceChain chain(box, dab.x, dab.y, dab.radius);
    for (std::int32_t above = box.ya; above < y; ++above) chain.nextRow();
    const std::int32_t last = std::min(box.xb - x, kCount - 1);
    for (std::int32_t i = box.xa - x; i <= last; ++i) {
        const std::int32_t g = coverageAt(weights, chain.nextPixel());
        if (i >= 0) coverage[i] = g;
    }
    return lanes::load(coverage);
}

}  // namespace

// Eight pixels of a row, and what the discs cover of them.
template <class Depth>
struct ThinStroke<Depth>::Block {
    std::int32_t x, y;                  // first pixel
    Discs reaching;                     // discs that may cover one
    Floats across, down;                // the pixels, from the middle of the square
    Ints unsure;                        // 4096ths of a column behind its edge
    bool exactly;                       // a disc comes so near to a column's edge
    Ints largest;                       // by pixel
    alignas(32) Ints coverage[kDiscs];  // one after the other, by reaching disc

    void cover(const std::array<Disc, kDiscs>& discs) {
        largest = lanes::all(0);
        Ints nearest = lanes::all(kPastEdge);
        Ints* next = coverage;
        for (Discs rest = reaching; rest != 0; rest &= rest - 1) {
            const Disc& disc = discs[static_cast<std::size_t>(std::countr_zero(rest))];
            const Ints fine = fineColumns(disc);
            nearest = least(nearest, fine & kPastEdge);
            const Ints g = coverageOf(disc, fine);
            largest = most(largest, g);
            *next++ = g;
        }
        exactly = isNearEdge(nearest);
    }

    bool isNearEdge(const Disc& disc) const { return isNearEdge(fineColumns(disc) & kPastEdge); }

  private:
    // With the guard. Limited to columns 0.5 to 31.5: beyond them there is no edge to miss.
    Ints fineColumns(const Disc& disc) const {
        const Floats p = across - lanes::all(disc.x), q = down - lanes::all(disc.y);
        const Floats column = (p * p + q * q) * lanes::all(disc.scale) + lanes::all(disc.base);
        return rounded(least(most(column, lanes::all(static_cast<float>(0.5 * kFine))),
                             lanes::all(static_cast<float>(31.5 * kFine))));
    }

    bool isNearEdge(Ints past) const { return any(unsure > past); }

    Ints coverageOf(const Disc& disc, Ints fine) const {
        return ByteTable(disc.coverage->data())[fine >> 12] & (across <= lanes::all(disc.right));
    }
};

template <class Depth>
template <class Pixels>
inline void ThinStroke<Depth>::mergeCovered(Pixels& pixels, const Pixel& pen,
                                            const Block& block) const {
    Replay<Depth> replay(pen, pixels, raw(block.largest));
    if (replay.isNeeded()) {
        const Ints* coverage = block.coverage;
        for (Discs rest = block.reaching; rest != 0; rest &= rest - 1) {
            replay.paint(raw(*coverage++),
                         discs[static_cast<std::size_t>(std::countr_zero(rest))].dabs);
        }
    }
    pixels = replay.result();
}

// Dab by dab; those of a disc with no pixel near an edge have the coverage that the block knows.
template <class Depth>
template <class Pixels>
void ThinStroke<Depth>::mergeExactly(Pixels& pixels, const Pixel& pen, const Block& block) const {
    const EightPixels<Depth> eight(pen);
    const Ints* coverage = block.coverage;
    for (Discs rest = block.reaching; rest != 0; rest &= rest - 1, ++coverage) {
        const auto i = static_cast<std::size_t>(std::countr_zero(rest));
        const bool exactly = steep || block.isNearEdge(discs[i]);
        for (std::size_t k = 0; k < static_cast<std::size_t>(discs[i].dabs); ++k) {
            const Dab& dab = dabs[firstDab[i] + k];
            const Ints g = exactly ? exactCoverage(canvas, dab, block.x, block.y) : *coverage;
            eight.merge(pixels, eight.alphas(raw(g)));
        }
    }
}

template <class Depth>
inline void ThinStroke<Depth>::paintBlock(const Pixel& pen, const Block& block) const {
    const auto merge = [&](Pixel* place) {
        auto pixels = EightPixels<Depth>::load(place);
        if (steep || block.exactly) [[unlikely]] {
            mergeExactly(pixels, pen, block);
        } else {
            mergeCovered(pixels, pen, block);
        }
        EightPixels<Depth>::store(place, pixels);
    };
    Pixel* place = canvas.row<Depth>(block.y) + block.x;
    const std::int32_t room = canvas.width - block.x;
    if (room >= kCount) [[likely]] {
        merge(place);
        return;
    }
    Pixel edge[kCount] = {};
    std::copy_n(place, room, edge);
    merge(edge);
    std::copy_n(edge, room, place);
}

// row: in the square.
template <class Depth>
void ThinStroke<Depth>::paintRow(const Pixel& pen, std::int32_t row) const {
    const avx2::Bytes lefts(left), rights(right), tops(top), bottoms(bottom);
    std::int32_t x = leastOf(lefts, tops, bottoms, row);
    const auto goOn = [&](Discs& rest) {
        x += kCount;
        rest &= ~whereGreater(avx2::Bytes(x), rights);
    };
    for (Discs rest = ~whereMissed(tops, bottoms, row); rest != 0; goOn(rest)) {
        if (shows.hidesEight(squareX + x, squareY + row)) continue;
        Block block;
        block.x = squareX + x;
        block.y = squareY + row;
        block.reaching = rest & ~whereGreater(lefts, avx2::Bytes(x + kCount - 1));
        block.across = toFloats(kIota) + lanes::all(static_cast<float>(x - kMiddle));
        block.down = lanes::all(static_cast<float>(row - kMiddle));
        block.unsure = lanes::all(2 * guard);
        block.cover(discs);
        paintBlock(pen, block);
    }
}

template <class Depth>
void ThinStroke<Depth>::prepare() {
    for (std::size_t i = 0; i < kDiscs; i += kCount)
        avx2::separate(&places[i], &left[i], &top[i], &right[i], &bottom[i]);
    double thinnest = HUGE_VAL;
    for (std::size_t i = 0; i < discCount; ++i) {
        thinnest = std::min(thinnest, dabs[firstDab[i]].radius);
    }
    guard = static_cast<std::int32_t>(kGuard * (1.0 + 1.0 / std::max(thinnest, kSteepRadius))) + 1;
    std::uint32_t key = kNoKey;
    Bytes* coverage = coverages.data() - 1;
    for (std::size_t i = 0; i < discCount; ++i) {
        const Dab& dab = dabs[firstDab[i]];
        const double r = dab.radius;
        if (blendKey(r) != key) {
            key = blendKey(r);
            const auto row = static_cast<std::int32_t>(key >> 16);
            const auto weight = static_cast<std::int32_t>(key & 0xFFFF);
            coverageTable({row, row + 1, weight, 65536 - weight}, (++coverage)->data());
        }
        // Column: (8 / r) (p^2 + q^2) - 8 r + 16.5; the guard moves what is unsure behind an edge.
        discs[i] = {static_cast<float>(dab.x - (squareX + kMiddle)),
                    static_cast<float>(dab.y - (squareY + kMiddle)),
                    static_cast<float>(kFine * 8.0 / r),
                    static_cast<float>(kFine * (16.5 - 8.0 * r) + guard),
                    static_cast<float>(right[i] - kMiddle),
                    static_cast<std::int32_t>((i + 1 < discCount ? firstDab[i + 1] : dabCount) -
                                              firstDab[i]),
                    coverage};
    }
}

template <class Depth>
void ThinStroke<Depth>::flush(const Pixel& pen) {
    if (discCount == 0) return;
    prepare();
    const std::int32_t first = avx2::leastOf(avx2::Bytes(top));
    const std::int32_t last = avx2::mostOf(avx2::Bytes(bottom));
    // In the order in which the pixels were asked for.
    if (top[0] <= top[discCount - 1]) {
        for (std::int32_t row = first; row <= last; ++row) paintRow(pen, row);
    } else {
        for (std::int32_t row = last; row >= first; --row) paintRow(pen, row);
    }
    discCount = dabCount = 0;
}

template <class Depth>
void ThinStroke<Depth>::start(const Dab& dab, const Box& box) {
    squareX = box.firstX() - kMiddle;
    squareY = box.firstY() - kMiddle;
    steep = dab.radius < kSteepRadius;
    places.fill(kNowhere);
    // No twin of one before.
    lastKey = kNoKey;
    dabs[0] = dab;
}

// place: the dab's box in the square.
template <class Depth>
inline __attribute__((always_inline)) bool ThinStroke<Depth>::fits(const Dab& dab,
                                                                   const Box& place) const {
    return place.isWithin(kReach, kMiddle) && discCount < kDiscs && dabCount < kDabs &&
           (dab.radius < kSteepRadius) == steep;
}

template <class Depth>
void ThinStroke<Depth>::add(const Pixel& pen, const Dab& dab) {
    const Box box(dab.x, dab.y, dab.radius, canvas.width, canvas.height);
    if (discCount == 0 || !fits(dab, box.from(squareX, squareY))) [[unlikely]] {
        if (box.isEmpty()) return;
        flush(pen);
        start(dab, box);
    }
    // Without a branch, for whether a dab is a twin is up to rounding. A twin's disc is written
    // once more as it is.
    const std::uint32_t place = box.from(squareX, squareY).bytes();
    const std::uint32_t key = blendKey(dab.radius);
    const Triple its(dab.x, dab.y, dab.radius);
    const Triple before(&dabs[std::max<std::size_t>(dabCount, 1) - 1].x);
    const bool twin = (key == lastKey) & (place == lastPlace) & its.isNear(before, kTwin);
    const std::size_t i = discCount - twin;
    discCount = i + 1;
    firstDab[i] = twin ? firstDab[i] : static_cast<std::uint8_t>(dabCount);
    places[i] = place;
    lastPlace = place;
    lastKey = key;
    its.store(&dabs[dabCount++].x);
    // A line crosses a row or more with every dab, each far off in memory. By the time that the
    // stretch is painted they are there.
    __builtin_prefetch(canvas.row<Depth>(box.firstY()) + box.firstX(), 1);
    __builtin_prefetch(canvas.row<Depth>(box.lastY()) + box.lastX(), 1);
}

template class ThinStroke<Depth8>;
template class ThinStroke<Depth16>;
template class ThinStroke<DepthFloat>;

}  // namespace streakfall

#include "shareForLines/simd/End.h"
