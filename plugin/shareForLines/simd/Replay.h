// Replay<Depth>: the paints of one pen on eight pixels, one after the other.
//
// For pixels on which a single merge of the largest coverage does not tell what all the paints
// leave, because they hold another colour. In 8 and 16 bits the mixing branch alone is replayed,
// with the channels kept apart:
//
// - Pixels that mix no colours (empty, of the pen's colour, or reached by the full alpha) have
//   what they should from the merge of the largest coverage and take it over at the end.
// - The other pixels never see the full alpha nor become empty, and mixing is right for them also
//   once they have come to the pen's colour: (pen x a + pen x b) / (a + b) is the pen.
// - In 8 bits n / s truncated equals (n + 1/2) x (1 / s) truncated: the exact value lies half of 1
// / s, that
//   is 1/510 or more, off every whole number on either side, and single precision moves a number
//   up to 255 by less than 1/10000.
#pragma once

#include "shareForLines/simd/Begin.h"
#include "shareForLines/simd/EightPixels.h"

namespace streakfall::avx2 {

template <class Depth>
class Replay {
  public:
    using Pixels = typename EightPixels<Depth>::Pixels;

    // largest: of all coverages to be painted, by pixel. The pen outlives the replay.
    Replay(const typename Depth::Pixel& pen, const Pixels& old, __m256i largest)
        : eight(pen), pixels(old), byLargest(old) {
        mixes = eight.merge(byLargest, eight.alphas(largest));
        // In float the alpha can be a hair below 0, and falls with coverage then.
        if (!(pen.alpha > 0)) mixes = true;
    }

    // False when the largest coverage is all that counts: then it need not be painted.
    bool isNeeded() const { return mixes; }

    // Coverages 0 to 255, painted one or more times.
    void paint(__m256i coverage, std::int32_t times) {
        const auto a = eight.alphas(coverage);
        bool changes = eight.merge(pixels, a);
        for (std::int32_t i = 1; changes && i < times; ++i) changes = eight.merge(pixels, a);
    }

    Pixels result() const { return mixes ? pixels : byLargest; }

  private:
    const EightPixels<Depth> eight;
    Pixels pixels, byLargest;
    bool mixes;
};

// Channels as differences from the pen's, in the order of Pixels16.
template <>
class Replay<Depth16> {
  public:
    using Pixels = Pixels16;

    Replay(const PF_Pixel16& pen, const Pixels& old, __m256i largest)
        : eight(pen), byLargest(old), alpha(lowWords(old.alphaRed)) {
        mixes = eight.mergeSimply(byLargest, eight.alphas(largest));
        ownRed = _mm256_set1_epi32(pen.red);
        ownGreen = _mm256_set1_epi32(pen.green);
        ownBlue = _mm256_set1_epi32(pen.blue);
        red = _mm256_sub_epi32(highWords(old.alphaRed), ownRed);
        green = _mm256_sub_epi32(lowWords(old.greenBlue), ownGreen);
        blue = _mm256_sub_epi32(highWords(old.greenBlue), ownBlue);
    }

    bool isNeeded() const { return anyLane(mixes); }

    void paint(__m256i coverage, std::int32_t times) {
        const __m256i a = eight.alphas(coverage);
        do {
            const Mixture16 mixture(a, alpha);
            red = mixture.of(red);
            green = mixture.of(green);
            blue = mixture.of(blue);
            alpha = _mm256_max_epi32(alpha, a);
        } while (--times > 0);
    }

    Pixels result() const {
        const __m256i alphaRed = wordPairs(alpha, _mm256_add_epi32(red, ownRed));
        const __m256i greenBlue =
            wordPairs(_mm256_add_epi32(green, ownGreen), _mm256_add_epi32(blue, ownBlue));
        return {_mm256_blendv_epi8(byLargest.alphaRed, alphaRed, mixes),
                _mm256_blendv_epi8(byLargest.greenBlue, greenBlue, mixes)};
    }

  private:
    const EightPixels<Depth16> eight;
    Pixels byLargest;
    __m256i alpha, red, green, blue, ownRed, ownGreen, ownBlue;
    __m256i mixes;  // lanes that mix colours
};

template <>
class Replay<Depth8> {
  public:
    Replay(const PF_Pixel& p, __m256i old, __m256i largest)
        : pen(p),
          alpha(_mm256_and_si256(old, byte())),
          red(channel(old, 8)),
          green(channel(old, 16)),
          blue(channel(old, 24)) {
        const __m256i color = EightPixels<Depth8>::colorOf(pen);
        const __m256i a = alphas(largest);
        const __m256i same = _mm256_cmpeq_epi32(_mm256_andnot_si256(byte(), old), color);
        const Branches branches = branchesOf(alpha, a, same, Depth8::kWhite);
        mixes = branches.mixes;
        byLargest = _mm256_blendv_epi8(old, _mm256_or_si256(color, a), branches.takes);
    }

    bool isNeeded() const { return anyLane(mixes); }

    inline void paint(__m256i coverage, std::int32_t times) {
        const __m256i a = alphas(coverage);
        const __m256i unpainted = _mm256_cmpeq_epi32(a, _mm256_setzero_si256());
        const __m256 wa = _mm256_cvtepi32_ps(a);
        const auto penPart = [wa](std::uint8_t c) {
            return _mm256_add_ps(_mm256_mul_ps(wa, _mm256_set1_ps(c)), _mm256_set1_ps(0.5f));
        };
        const __m256 penRed = penPart(pen.red), penGreen = penPart(pen.green),
                     penBlue = penPart(pen.blue);
        do {
            const __m256i b =
                _mm256_srli_epi32(_mm256_mullo_epi16(_mm256_sub_epi32(byte(), a), alpha), 8);
            // Where nothing is painted the old colour weighs 1 at least, and stays.
            const __m256 wb = _mm256_cvtepi32_ps(_mm256_sub_epi32(b, unpainted));
            const __m256 inverse = _mm256_div_ps(_mm256_set1_ps(1.0f), _mm256_add_ps(wa, wb));
            const auto mix = [wb, inverse](__m256 part, __m256 stored) {
                return _mm256_round_ps(
                    _mm256_mul_ps(_mm256_add_ps(part, _mm256_mul_ps(stored, wb)), inverse),
                    _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
            };
            red = mix(penRed, red);
            green = mix(penGreen, green);
            blue = mix(penBlue, blue);
            alpha = _mm256_max_epi32(alpha, a);
        } while (--times > 0);
    }

    __m256i result() const {
        const __m256i mixed =
            _mm256_or_si256(_mm256_or_si256(alpha, shifted(red, 8)),
                            _mm256_or_si256(shifted(green, 16), shifted(blue, 24)));
        return _mm256_blendv_epi8(byLargest, mixed, mixes);
    }

  private:
    static __m256i byte() { return _mm256_set1_epi32(0xFF); }
    static __m256i shifted(__m256 c, int shift) {
        return _mm256_slli_epi32(_mm256_cvttps_epi32(c), shift);
    }
    static __m256 channel(__m256i old, int shift) {
        return _mm256_cvtepi32_ps(_mm256_and_si256(_mm256_srli_epi32(old, shift), byte()));
    }
    // As EightPixels::alphas, in words of 16 bits.
    __m256i alphas(__m256i coverage) const {
        const __m256i product = _mm256_mullo_epi16(coverage, _mm256_set1_epi32(pen.alpha));
        return _mm256_srli_epi32(_mm256_mulhi_epu16(product, _mm256_set1_epi32(0x8081)), 7);
    }

    const PF_Pixel& pen;
    __m256i alpha;
    __m256 red, green, blue;
    __m256i byLargest, mixes;
};

}  // namespace streakfall::avx2

#include "shareForLines/simd/End.h"
