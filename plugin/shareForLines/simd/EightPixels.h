// mergePixel on eight pixels at once, in each depth, to the bit.
//
// EightPixels<Depth> is made of the pen, which outlives it, and works on
//
//   Pixels, Alphas   eight pixels of a row in registers, and one alpha for each, in the lanes'
//                    order: that of the row but in float
//   load, store      any address of a pixel with seven more behind it
//   alphas(g)        the pen's alpha at coverages 0 to 255; its own at kInterior
//   edgeAlphas(g)    not in float: likewise, without kInterior
//   payload(a)       an alpha in 32 bits, in every lane; of two the larger has the larger bits
//   covered(g, a)    alphas a at coverages g as payloads, in the row's order; ordered() makes
//                    Alphas of them
//   rests(p, most)   all ones, in the row's order, where no merge at alphas up to `most` changes
//                    the colour any more, and the alpha is the largest merged: the colour is the
//                    pen's, or within a step below it in every channel while some weight is left
//                    to it, whose mixture truncates to what it was
//   isDone(p)        all ones, in the row's order, where no paint of the pen at alphas up to its
//                    own changes anything: it rests, and has that alpha or more (insideGivesMost)
//   rested(p)        not in float: the colours that stay in the end (OrderOfPaint.h, 5.)
//   mergeSimply(p, a)  not in float: merges the lanes that mix no colours; all ones in the others
//   where(m, p, q)   not in float: p in lanes of m, else q
//   merge(p, a)      lanes where a is 0 stay. True when a second merge could change a pixel, as
//                    it does where colours were mixed.
#pragma once

#include "shareForLines/canvas/MergePixel.h"
#include "shareForLines/simd/Begin.h"
#include "shareForLines/simd/Vectors.h"

namespace streakfall::avx2 {

inline bool anyLane(__m256i lanes) { return _mm256_testz_si256(lanes, lanes) == 0; }

// Alpha x coverage / 255, the quotient of integers, exact for all pairs of bytes: in words, of
// which the product takes one.
inline __m256i coverAlpha8(__m256i coverage, __m256i alpha) {
    const __m256i product = _mm256_mullo_epi16(coverage, alpha);
    return _mm256_srli_epi32(_mm256_mulhi_epu16(product, _mm256_set1_epi32(32897)), 7);
}

// The branches of the merge in 8 and 16 bits.
struct Branches {
    __m256i takes;  // lanes that become the pen's colour with the paint's alpha
    __m256i mixes;  // lanes where colours mix; all others stay
};

inline Branches branchesOf(__m256i oldAlpha, __m256i a, __m256i sameColor, std::int32_t white) {
    const __m256i zero = _mm256_setzero_si256();
    const __m256i whites = _mm256_cmpeq_epi32(a, _mm256_set1_epi32(white));
    const __m256i simple =
        _mm256_or_si256(_mm256_or_si256(sameColor, _mm256_cmpeq_epi32(oldAlpha, zero)), whites);
    // On empty pixels and on pixels of one colour the larger alpha stays.
    const __m256i grows = _mm256_or_si256(_mm256_cmpgt_epi32(a, oldAlpha), whites);
    return {_mm256_and_si256(simple, grows),
            _mm256_andnot_si256(simple, _mm256_cmpgt_epi32(a, zero))};
}

template <class Depth>
struct EightPixels;

// A pixel is a lane, alpha in its lowest byte.
template <>
struct EightPixels<Depth8> {
    using Pixels = __m256i;
    using Alphas = __m256i;

    explicit EightPixels(const PF_Pixel& p) : pen(p), color(colorOf(p)) {}

    // The colour in every lane, alpha 0.
    static __m256i colorOf(const PF_Pixel& p) {
        return _mm256_set1_epi32(p.red << 8 | p.green << 16 |
                                 static_cast<int>(unsigned{p.blue} << 24));
    }

    static Pixels load(const PF_Pixel* from) { return avx2::load(from); }
    static void store(PF_Pixel* to, Pixels p) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), p);
    }

    Alphas alphas(__m256i coverage) const {
        return edgeAlphas(_mm256_min_epi32(coverage, _mm256_set1_epi32(255)));
    }
    Alphas edgeAlphas(__m256i coverage) const {
        return coverAlpha8(coverage, _mm256_set1_epi32(pen.alpha));
    }

    static __m256i payload(std::int32_t alpha) { return _mm256_set1_epi32(alpha); }
    static __m256i covered(__m256i coverage, __m256i alpha) {
        return coverAlpha8(_mm256_min_epi32(coverage, _mm256_set1_epi32(255)), alpha);
    }
    static Alphas ordered(__m256i alpha) { return alpha; }
    __m256i rests(const Pixels& p, std::int32_t most) const {
        const __m256i byte = _mm256_set1_epi32(0xFF);
        // Above the pen's colour, or below it by more than a step.
        const __m256i zero = _mm256_setzero_si256(), below = _mm256_subs_epu8(color, p);
        const __m256i above = _mm256_andnot_si256(byte, _mm256_subs_epu8(p, color));
        const __m256i off = _mm256_or_si256(below, above);
        const __m256i far = _mm256_or_si256(above, _mm256_subs_epu8(below, _mm256_set1_epi8(1)));
        const __m256i near = _mm256_cmpeq_epi32(far, zero);
        const __m256i left =
            _mm256_mullo_epi32(_mm256_and_si256(p, byte), _mm256_set1_epi32(Depth8::kWhite - most));
        return _mm256_or_si256(
            _mm256_cmpeq_epi32(off, zero),
            _mm256_and_si256(near, _mm256_cmpgt_epi32(left, _mm256_set1_epi32(255))));
    }

    __m256i isDone(const Pixels& p) const {
        const __m256i alpha = _mm256_and_si256(p, _mm256_set1_epi32(0xFF));
        const __m256i less = _mm256_cmpgt_epi32(_mm256_set1_epi32(pen.alpha), alpha);
        return _mm256_andnot_si256(less, rests(p, pen.alpha));
    }

    Pixels rested(Pixels p) const {
        const __m256i below = _mm256_subs_epu8(color, p);
        const __m256i rgb = _mm256_sub_epi8(color, _mm256_min_epu8(below, _mm256_set1_epi8(1)));
        return _mm256_or_si256(rgb, _mm256_and_si256(p, _mm256_set1_epi32(0xFF)));
    }

    static Pixels where(__m256i lanes, Pixels yes, Pixels no) {
        return _mm256_blendv_epi8(no, yes, lanes);
    }

    __attribute__((always_inline)) __m256i mergeSimply(Pixels& p, Alphas a) const {
        const __m256i byte = _mm256_set1_epi32(0xFF);
        const __m256i same = _mm256_cmpeq_epi32(_mm256_andnot_si256(byte, p), color);
        const Branches branches = branchesOf(_mm256_and_si256(p, byte), a, same, Depth8::kWhite);
        p = _mm256_blendv_epi8(p, _mm256_or_si256(color, a), branches.takes);
        return branches.mixes;
    }

    __attribute__((always_inline)) bool merge(Pixels& p, Alphas a) const {
        const __m256i mixes = mergeSimply(p, a);
        const bool mixed = anyLane(mixes);
        if (mixed) p = where(mixes, mix(p, a, pen), p);
        return mixed;
    }

  private:
    // In single precision the truncated quotient equals that of integers for all numerators up to
    // 65025 and weights up to 255.
    __attribute__((noinline)) static __m256i mix(__m256i old, __m256i a, const PF_Pixel& pen) {
        const __m256i byte = _mm256_set1_epi32(0xFF), oldAlpha = _mm256_and_si256(old, byte);
        const __m256i b =
            _mm256_srli_epi32(_mm256_mullo_epi32(_mm256_sub_epi32(byte, a), oldAlpha), 8);
        const __m256 wa = _mm256_cvtepi32_ps(a), wb = _mm256_cvtepi32_ps(b);
        const __m256 sum = _mm256_add_ps(wa, wb);
        const auto channel = [&](int shift, std::uint8_t penChannel) {
            const __m256 stored =
                _mm256_cvtepi32_ps(_mm256_and_si256(_mm256_srli_epi32(old, shift), byte));
            const __m256 numerator = _mm256_add_ps(_mm256_mul_ps(wa, _mm256_set1_ps(penChannel)),
                                                   _mm256_mul_ps(stored, wb));
            return _mm256_slli_epi32(_mm256_cvttps_epi32(_mm256_div_ps(numerator, sum)), shift);
        };
        const __m256i rgb = _mm256_or_si256(
            _mm256_or_si256(channel(8, pen.red), channel(16, pen.green)), channel(24, pen.blue));
        return _mm256_or_si256(rgb, _mm256_max_epi32(a, oldAlpha));
    }

    const PF_Pixel& pen;
    const __m256i color;
};

// Words of 16 bits in pairs.
inline __m256i lowWords(__m256i pairs) {
    return _mm256_and_si256(pairs, _mm256_set1_epi32(0xFFFF));
}
inline __m256i highWords(__m256i pairs) { return _mm256_srli_epi32(pairs, 16); }
inline __m256i wordPairs(__m256i low, __m256i high) {
    return _mm256_or_si256(low, _mm256_slli_epi32(high, 16));
}

// The mixture of a merge of alphas a, 0 to 32767, over stored alphas o in 16 bits: a channel that
// lies d above the pen's comes to d b / (a + b), rounded down, above it. Where nothing is painted
// it stays, as b is taken for 1 there. What white would give has no meaning.
//
// The trial q is that quotient or one short of it: in single precision it is off by less than
// 0.007, and takes 1/64 off before it is rounded down. The rest then tells,
//
//   q (a + b) - d b = (q - d) b + q a,
//
// whose factors have 16 bits with their sign: q is never farther from 0 than d, nor on its other
// side, but for the step it may be short.
class Mixture16 {
  public:
    Mixture16(__m256i a, __m256i o) {
        // (32768 - a) o / 32768; 65536, where a is 0, has an empty lower word.
        const __m256i left = _mm256_sub_epi32(_mm256_set1_epi32(65536), _mm256_add_epi32(a, a));
        const __m256i unpainted = _mm256_cmpeq_epi32(a, _mm256_setzero_si256());
        const __m256i b = _mm256_sub_epi32(_mm256_mulhi_epu16(left, o), unpainted);
        const __m256i sum = _mm256_add_epi32(a, b);
        weights = wordPairs(b, a);
        oneLessSum = _mm256_sub_epi32(_mm256_set1_epi32(1), sum);
        part = _mm256_div_ps(_mm256_cvtepi32_ps(b), _mm256_cvtepi32_ps(sum));
    }

    // d: -32768 to 32768.
    __m256i of(__m256i d) const {
        const __m256 trial = _mm256_mul_ps(_mm256_cvtepi32_ps(d), part);
        const __m256i q =
            _mm256_cvtps_epi32(_mm256_sub_ps(trial, _mm256_set1_ps(0.5f + 1.0f / 64.0f)));
        const __m256i factors =
            _mm256_blend_epi16(_mm256_sub_epi32(q, d), _mm256_slli_epi32(q, 16), 0xAA);
        const __m256i isShort = _mm256_cmpgt_epi32(oneLessSum, _mm256_madd_epi16(factors, weights));
        return _mm256_sub_epi32(q, isShort);
    }

  private:
    __m256i weights;     // b and a
    __m256i oneLessSum;  // 1 - (a + b)
    __m256 part;         // b / (a + b)
};

// Two words a pixel, the first channel of each in the lower half; all channels 0 to 32768.
struct Pixels16 {
    __m256i alphaRed, greenBlue;  // pixels 0, 1, 4, 5, 2, 3, 6, 7
};

template <>
struct EightPixels<Depth16> {
    using Pixels = Pixels16;
    using Alphas = __m256i;

    explicit EightPixels(const PF_Pixel16& p)
        : pen(p),
          red(_mm256_set1_epi32(static_cast<int>(unsigned{p.red} << 16))),
          greenBlue(_mm256_set1_epi32(static_cast<int>(p.green | unsigned{p.blue} << 16))) {}

    static Pixels load(const PF_Pixel16* from) {
        const __m256 first = _mm256_castsi256_ps(avx2::load(from));
        const __m256 second = _mm256_castsi256_ps(avx2::load(from + 4));
        return {_mm256_castps_si256(_mm256_shuffle_ps(first, second, 0x88)),
                _mm256_castps_si256(_mm256_shuffle_ps(first, second, 0xDD))};
    }
    static void store(PF_Pixel16* to, const Pixels& p) {
        auto* vector = reinterpret_cast<__m256i*>(to);
        _mm256_storeu_si256(vector, _mm256_unpacklo_epi32(p.alphaRed, p.greenBlue));
        _mm256_storeu_si256(vector + 1, _mm256_unpackhi_epi32(p.alphaRed, p.greenBlue));
    }

    // In single precision: products stay below 2^23, so they are exact; a quotient that is not
    // whole lies 1/255 or more below the next whole number, four times as far as rounding moves
    // numbers below 2^15.
    Alphas alphas(__m256i coverage) const {
        return edgeAlphas(_mm256_min_epi32(coverage, _mm256_set1_epi32(255)));
    }
    Alphas edgeAlphas(__m256i coverage) const {
        const __m256i product = _mm256_mullo_epi32(coverage, _mm256_set1_epi32(pen.alpha));
        const __m256i a =
            _mm256_cvttps_epi32(_mm256_div_ps(_mm256_cvtepi32_ps(product), _mm256_set1_ps(255.0f)));
        return _mm256_permute4x64_epi64(a, 0xD8);
    }

    static __m256i payload(std::int32_t alpha) { return _mm256_set1_epi32(alpha); }
    static __m256i covered(__m256i coverage, __m256i alpha) {
        const __m256i product =
            _mm256_mullo_epi32(_mm256_min_epi32(coverage, _mm256_set1_epi32(255)), alpha);
        return _mm256_cvttps_epi32(
            _mm256_div_ps(_mm256_cvtepi32_ps(product), _mm256_set1_ps(255.0f)));
    }
    static Alphas ordered(__m256i alpha) { return _mm256_permute4x64_epi64(alpha, 0xD8); }
    __m256i rests(const Pixels& p, std::int32_t most) const {
        // Above the pen's colour, or below it by more than a step.
        const __m256i zero = _mm256_setzero_si256(), one = _mm256_set1_epi16(1);
        const __m256i low = _mm256_set1_epi32(0xFFFF);
        const __m256i redBelow = _mm256_andnot_si256(low, _mm256_subs_epu16(red, p.alphaRed));
        const __m256i restBelow = _mm256_subs_epu16(greenBlue, p.greenBlue);
        const __m256i above =
            _mm256_or_si256(_mm256_andnot_si256(low, _mm256_subs_epu16(p.alphaRed, red)),
                            _mm256_subs_epu16(p.greenBlue, greenBlue));
        const __m256i off = _mm256_or_si256(above, _mm256_or_si256(redBelow, restBelow));
        const __m256i far = _mm256_or_si256(
            above,
            _mm256_or_si256(_mm256_subs_epu16(redBelow, one), _mm256_subs_epu16(restBelow, one)));
        const __m256i near = _mm256_cmpeq_epi32(far, zero);
        const __m256i left =
            _mm256_mullo_epi32(lowWords(p.alphaRed), _mm256_set1_epi32(Depth16::kWhite - most));
        return ordered(_mm256_or_si256(
            _mm256_cmpeq_epi32(off, zero),
            _mm256_and_si256(near, _mm256_cmpgt_epi32(left, _mm256_set1_epi32(32767)))));
    }

    __m256i isDone(const Pixels& p) const {
        const __m256i alpha = ordered(lowWords(p.alphaRed));
        const __m256i less = _mm256_cmpgt_epi32(_mm256_set1_epi32(pen.alpha), alpha);
        return _mm256_andnot_si256(less, rests(p, pen.alpha));
    }

    Pixels rested(const Pixels& p) const {
        return {_mm256_or_si256(stepBelow(red, p.alphaRed), lowWords(p.alphaRed)),
                stepBelow(greenBlue, p.greenBlue)};
    }

    static Pixels where(__m256i lanes, const Pixels& yes, const Pixels& no) {
        return {_mm256_blendv_epi8(no.alphaRed, yes.alphaRed, lanes),
                _mm256_blendv_epi8(no.greenBlue, yes.greenBlue, lanes)};
    }

    __attribute__((always_inline)) __m256i mergeSimply(Pixels& p, Alphas a) const {
        const __m256i oldAlpha = lowWords(p.alphaRed);
        const __m256i same =
            _mm256_and_si256(_mm256_cmpeq_epi32(_mm256_sub_epi32(p.alphaRed, oldAlpha), red),
                             _mm256_cmpeq_epi32(p.greenBlue, greenBlue));
        const Branches branches = branchesOf(oldAlpha, a, same, Depth16::kWhite);
        p.alphaRed = _mm256_blendv_epi8(p.alphaRed, _mm256_or_si256(red, a), branches.takes);
        p.greenBlue = _mm256_blendv_epi8(p.greenBlue, greenBlue, branches.takes);
        return branches.mixes;
    }

    __attribute__((always_inline)) bool merge(Pixels& p, Alphas a) const {
        const __m256i mixes = mergeSimply(p, a);
        const bool mixed = anyLane(mixes);
        if (mixed) p = where(mixes, mix(p, a, pen), p);
        return mixed;
    }

  private:
    // The colour where it is reached or passed, else a step less.
    static __m256i stepBelow(__m256i color, __m256i now) {
        const __m256i below = _mm256_subs_epu16(color, now);
        return _mm256_sub_epi16(color, _mm256_min_epu16(below, _mm256_set1_epi16(1)));
    }

    __attribute__((noinline)) static Pixels mix(const Pixels& old, __m256i a,
                                                const PF_Pixel16& pen) {
        const __m256i oldAlpha = lowWords(old.alphaRed);
        const Mixture16 mixture(a, oldAlpha);
        const auto channel = [&](__m256i stored, std::uint16_t penChannel) {
            const __m256i own = _mm256_set1_epi32(penChannel);
            return _mm256_add_epi32(own, mixture.of(_mm256_sub_epi32(stored, own)));
        };
        return {wordPairs(_mm256_max_epi32(a, oldAlpha), channel(highWords(old.alphaRed), pen.red)),
                wordPairs(channel(lowWords(old.greenBlue), pen.green),
                          channel(highWords(old.greenBlue), pen.blue))};
    }

    const PF_Pixel16& pen;
    const __m256i red, greenBlue;  // in every lane, alpha 0
};

// By channel; pixels 0, 2, 4, 6, 1, 3, 5, 7.
struct PixelsFloat {
    __m256 alpha, red, green, blue;
};

template <>
struct EightPixels<DepthFloat> {
    using Pixels = PixelsFloat;
    using Alphas = __m256;

    explicit EightPixels(const PF_PixelFloat& p)
        : pen(p), settles(p.red == p.red && p.green == p.green && p.blue == p.blue) {}

    static Pixels load(const PF_PixelFloat* from) {
        const auto* f = reinterpret_cast<const float*>(from);
        return transposed({_mm256_loadu_ps(f), _mm256_loadu_ps(f + 8), _mm256_loadu_ps(f + 16),
                           _mm256_loadu_ps(f + 24)});
    }
    static void store(PF_PixelFloat* to, const Pixels& p) {
        auto* f = reinterpret_cast<float*>(to);
        const Pixels rows = transposed(p);
        _mm256_storeu_ps(f, rows.alpha);
        _mm256_storeu_ps(f + 8, rows.red);
        _mm256_storeu_ps(f + 16, rows.green);
        _mm256_storeu_ps(f + 24, rows.blue);
    }

    // A single-precision quotient by 255 is never nearer than 2^-33 of itself to where rounding
    // turns, so it is the same by the double nearest 1/255, rounded to double on the way.
    Alphas alphas(__m256i coverage) const {
        const __m256 product = _mm256_mul_ps(_mm256_cvtepi32_ps(coverage), penLanes(pen.alpha));
        const __m256 edge = _mm256_div_ps(product, _mm256_set1_ps(255.0f));
        const __m256i inside = _mm256_cmpeq_epi32(coverage, _mm256_set1_epi32(kInterior));
        return _mm256_permutevar8x32_ps(
            _mm256_blendv_ps(edge, penLanes(pen.alpha), _mm256_castsi256_ps(inside)),
            _mm256_setr_epi32(0, 2, 4, 6, 1, 3, 5, 7));
    }

    static __m256i payload(float alpha) { return _mm256_castps_si256(_mm256_set1_ps(alpha)); }
    static __m256i covered(__m256i coverage, __m256i alpha) {
        const __m256 whole = _mm256_castsi256_ps(alpha);
        const __m256 edge = _mm256_div_ps(_mm256_mul_ps(_mm256_cvtepi32_ps(coverage), whole),
                                          _mm256_set1_ps(255.0f));
        const __m256i inside = _mm256_cmpeq_epi32(coverage, _mm256_set1_epi32(kInterior));
        return _mm256_castps_si256(_mm256_blendv_ps(edge, whole, _mm256_castsi256_ps(inside)));
    }
    static Alphas ordered(__m256i alpha) {
        return _mm256_permutevar8x32_ps(_mm256_castsi256_ps(alpha),
                                        _mm256_setr_epi32(0, 2, 4, 6, 1, 3, 5, 7));
    }
    __m256i rests(const Pixels& p, float) const {
        const __m256 same = _mm256_and_ps(
            _mm256_and_ps(equal(penLanes(pen.red), p.red), equal(penLanes(pen.green), p.green)),
            equal(penLanes(pen.blue), p.blue));
        return _mm256_permutevar8x32_epi32(_mm256_castps_si256(same),
                                           _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
    }

    __m256i isDone(const Pixels& p) const {
        const __m256 enough = _mm256_cmp_ps(p.alpha, penLanes(pen.alpha), _CMP_GE_OQ);
        return _mm256_and_si256(
            _mm256_permutevar8x32_epi32(_mm256_castps_si256(enough),
                                        _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7)),
            rests(p, pen.alpha));
    }

    __attribute__((always_inline)) bool merge(Pixels& p, Alphas a) const {
        const __m256 zero = _mm256_setzero_ps(), o = p.alpha;
        const __m256 penRed = penLanes(pen.red), penGreen = penLanes(pen.green),
                     penBlue = penLanes(pen.blue);
        const __m256 unpainted = equal(a, zero);
        const __m256 fresh =
            _mm256_or_ps(equal(o, zero), equal(a, _mm256_set1_ps(DepthFloat::kWhite)));
        const __m256 same = _mm256_and_ps(
            _mm256_and_ps(equal(penRed, p.red), equal(penGreen, p.green)), equal(penBlue, p.blue));
        const __m256 takes = _mm256_andnot_ps(unpainted, fresh);
        const __m256 stays = _mm256_or_ps(_mm256_or_ps(unpainted, fresh), same);
        const Pixels old = p;
        // max_ps is (a > o ? a : o), also for NaN and zeros.
        p.alpha = _mm256_blendv_ps(_mm256_blendv_ps(_mm256_max_ps(a, o), a, fresh), o, unpainted);
        p.red = _mm256_blendv_ps(old.red, penRed, takes);
        p.green = _mm256_blendv_ps(old.green, penGreen, takes);
        p.blue = _mm256_blendv_ps(old.blue, penBlue, takes);
        const bool mixed = _mm256_movemask_ps(stays) != 0xFF;
        if (mixed) {
            const __m256 b = _mm256_mul_ps(_mm256_sub_ps(_mm256_set1_ps(1.0f), a), o);
            const __m256 sum = _mm256_add_ps(a, b);
            const auto mix = [&](__m256 penChannel, __m256 stored, __m256 simple) {
                const __m256 n =
                    _mm256_add_ps(_mm256_mul_ps(penChannel, a), _mm256_mul_ps(stored, b));
                return _mm256_blendv_ps(_mm256_div_ps(n, sum), simple, stays);
            };
            p.red = mix(penRed, old.red, p.red);
            p.green = mix(penGreen, old.green, p.green);
            p.blue = mix(penBlue, old.blue, p.blue);
        }
        return mixed || !settles;
    }

  private:
    static __m256 equal(__m256 x, __m256 y) { return _mm256_cmp_ps(x, y, _CMP_EQ_OQ); }
    static __m256 penLanes(float channel) { return _mm256_set1_ps(channel); }

    // Pairs of pixels to channels, and back.
    static Pixels transposed(const Pixels& p) {
        const __m256 low0 = _mm256_unpacklo_ps(p.alpha, p.red);
        const __m256 low1 = _mm256_unpacklo_ps(p.green, p.blue);
        const __m256 high0 = _mm256_unpackhi_ps(p.alpha, p.red);
        const __m256 high1 = _mm256_unpackhi_ps(p.green, p.blue);
        return {_mm256_shuffle_ps(low0, low1, 0x44), _mm256_shuffle_ps(low0, low1, 0xEE),
                _mm256_shuffle_ps(high0, high1, 0x44), _mm256_shuffle_ps(high0, high1, 0xEE)};
    }

    const PF_PixelFloat& pen;
    const bool settles;  // false when the pen holds a NaN, which equals no colour
};

}  // namespace streakfall::avx2

#include "shareForLines/simd/End.h"
