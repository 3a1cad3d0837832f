// Eight pixels while one paint after the other is merged, in two ways:
//
//   MergedPixels<Depth>   any pixels, by the whole merge
//   MixedPixels<Depth>    in 8 and 16 bits pixels that hold another colour than the pen's and no
//                         paint of white: by the mixing branch alone, with the channels kept apart
//
// Both have
//
//   merge(a, times)   alphas (EightPixels), one or more times
//   rests(most)       EightPixels::rests, of the pixels as they are
//   result()          the pixels, all of them
//
// Mixing is right also once a pixel has come to the pen's colour: (pen x a + pen x b) / (a + b) is
// the pen. The pen outlives both.
#pragma once

#include "shareForLines/simd/Begin.h"
#include "shareForLines/simd/EightPixels.h"

namespace streakfall::avx2 {

template <class Depth>
class MergedPixels {
  public:
    using Pixels = typename EightPixels<Depth>::Pixels;
    using Alphas = typename EightPixels<Depth>::Alphas;

    MergedPixels(const typename Depth::Pixel& pen, const Pixels& old) : eight(pen), pixels(old) {}

    void merge(Alphas a, std::int32_t times) {
        bool changes = eight.merge(pixels, a);
        for (std::int32_t i = 1; changes && i < times; ++i) changes = eight.merge(pixels, a);
    }
    __m256i rests(typename Depth::Channel most) const { return eight.rests(pixels, most); }
    const Pixels& result() const { return pixels; }

  private:
    const EightPixels<Depth> eight;
    Pixels pixels;
};

template <class Depth>
class MixedPixels : public MergedPixels<Depth> {
  public:
    using MergedPixels<Depth>::MergedPixels;
};

// n / s truncated equals (n + 1/2) x (1 / s) truncated: the exact value lies half of 1 / s, that is
// 1/510 or more, off every whole number on either side, and single precision moves a number up to
// 255 by less than 1/10000.
template <>
class MixedPixels<Depth8> {
  public:
    MixedPixels(const PF_Pixel& p, __m256i old)
        : pen(p),
          alpha(_mm256_and_si256(old, byte())),
          red(channel(old, 8)),
          green(channel(old, 16)),
          blue(channel(old, 24)) {}

    inline void merge(__m256i a, std::int32_t times) {
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

    __m256i rests(std::int32_t most) const {
        const __m256 r = below(pen.red, red), g = below(pen.green, green),
                     b = below(pen.blue, blue);
        const __m256 farthest = _mm256_max_ps(_mm256_max_ps(r, g), b);
        const __m256 least = _mm256_min_ps(_mm256_min_ps(r, g), b);
        const __m256 zero = _mm256_setzero_ps(), one = _mm256_set1_ps(1.0f);
        const __m256 passed = _mm256_cmp_ps(least, zero, _CMP_GE_OQ);
        const __m256 same = _mm256_cmp_ps(farthest, zero, _CMP_LE_OQ);
        const __m256 near = _mm256_cmp_ps(farthest, one, _CMP_LE_OQ);
        const __m256i left =
            _mm256_cmpgt_epi32(_mm256_mullo_epi32(alpha, _mm256_set1_epi32(Depth8::kWhite - most)),
                               _mm256_set1_epi32(255));
        const __m256 stays = _mm256_or_ps(same, _mm256_and_ps(near, _mm256_castsi256_ps(left)));
        return _mm256_castps_si256(_mm256_and_ps(passed, stays));
    }

    __m256i result() const {
        return _mm256_or_si256(_mm256_or_si256(alpha, shifted(red, 8)),
                               _mm256_or_si256(shifted(green, 16), shifted(blue, 24)));
    }

  private:
    static __m256i byte() { return _mm256_set1_epi32(0xFF); }
    static __m256 below(std::uint8_t own, __m256 stored) {
        return _mm256_sub_ps(_mm256_set1_ps(own), stored);
    }
    static __m256i shifted(__m256 c, int shift) {
        return _mm256_slli_epi32(_mm256_cvttps_epi32(c), shift);
    }
    static __m256 channel(__m256i old, int shift) {
        return _mm256_cvtepi32_ps(_mm256_and_si256(_mm256_srli_epi32(old, shift), byte()));
    }

    const PF_Pixel& pen;
    __m256i alpha;
    __m256 red, green, blue;
};

// Channels as differences from the pen's, in the order of Pixels16.
template <>
class MixedPixels<Depth16> {
  public:
    MixedPixels(const PF_Pixel16& pen, const Pixels16& old)
        : alpha(lowWords(old.alphaRed)),
          ownRed(_mm256_set1_epi32(pen.red)),
          ownGreen(_mm256_set1_epi32(pen.green)),
          ownBlue(_mm256_set1_epi32(pen.blue)),
          red(_mm256_sub_epi32(highWords(old.alphaRed), ownRed)),
          green(_mm256_sub_epi32(lowWords(old.greenBlue), ownGreen)),
          blue(_mm256_sub_epi32(highWords(old.greenBlue), ownBlue)) {}

    inline void merge(__m256i a, std::int32_t times) {
        do {
            const Mixture16 mixture(a, alpha);
            red = mixture.of(red);
            green = mixture.of(green);
            blue = mixture.of(blue);
            alpha = _mm256_max_epi32(alpha, a);
        } while (--times > 0);
    }

    __m256i rests(std::int32_t most) const {
        const __m256i highest = _mm256_max_epi32(_mm256_max_epi32(red, green), blue);
        const __m256i lowest = _mm256_min_epi32(_mm256_min_epi32(red, green), blue);
        const __m256i passed = _mm256_cmpgt_epi32(_mm256_set1_epi32(1), highest);
        const __m256i same = _mm256_cmpgt_epi32(lowest, _mm256_set1_epi32(-1));
        const __m256i near = _mm256_cmpgt_epi32(lowest, _mm256_set1_epi32(-2));
        const __m256i left =
            _mm256_cmpgt_epi32(_mm256_mullo_epi32(alpha, _mm256_set1_epi32(Depth16::kWhite - most)),
                               _mm256_set1_epi32(32767));
        return EightPixels<Depth16>::ordered(
            _mm256_and_si256(passed, _mm256_or_si256(same, _mm256_and_si256(near, left))));
    }

    Pixels16 result() const {
        return {wordPairs(alpha, _mm256_add_epi32(red, ownRed)),
                wordPairs(_mm256_add_epi32(green, ownGreen), _mm256_add_epi32(blue, ownBlue))};
    }

  private:
    __m256i alpha;
    const __m256i ownRed, ownGreen, ownBlue;
    __m256i red, green, blue;
};

}  // namespace streakfall::avx2

#include "shareForLines/simd/End.h"
