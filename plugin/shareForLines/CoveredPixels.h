// CoveredPixels: a set of pixels, one bit each, within a box of the canvas.
//
// Owner: the canvas it belongs to, which lends it to one batch of dabs at a time; grows to the
// largest box, a bit a pixel. Whole words are written, so that neighbouring dabs, which set bits
// near each other, find their words in the store buffer.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "shareForLines/Range.h"

namespace streakfall {

class CoveredPixels {
  public:
    // The empty set in this box, of at least a row and a column.
    void start(const Range& columns, const Range& rows) {
        box = columns;
        top = rows.from;
        stride = static_cast<std::size_t>(columns.count()) / kBits + 2;
        const std::size_t size = stride * static_cast<std::size_t>(rows.count());
        if (words.size() < size) words.resize(size);
        std::fill_n(words.begin(), size, Word{0});
    }

    // Columns, one at least, and row lie in the box.
    void add(const Range& columns, std::int32_t y) {
        const std::size_t from = bit(columns.from), to = bit(columns.to);
        Word* word = &words[row(y) + from / kBits];
        const Word* last = &words[row(y) + to / kBits];
        const Word first = ~Word{0} << (from % kBits), rest = ~Word{0} >> (kBits - 1 - to % kBits);
        if (word == last) {
            *word |= first & rest;
            return;
        }
        *word++ |= first;
        while (word != last) *word++ = ~Word{0};
        *word |= rest;
    }

    // All of these columns, which lie in the box; true for none.
    bool holds(const Range& columns, std::int32_t y) const {
        return columns.empty() || next(columns.from, y, false) > columns.to;
    }

    // Calls paint(Range) for all of the row's columns in the set, each once, from the left.
    template <class Paint>
    void forRanges(std::int32_t y, Paint paint) const {
        for (std::int32_t x = next(box.from, y, true); x <= box.to;) {
            const std::int32_t end = next(x, y, false);
            paint(Range{x, end - 1});
            x = next(end, y, true);
        }
    }

    // The same for vectors: bit i of the row, from the lowest of its first byte on, is column
    // columns().from + i. Eight bytes behind a row's last bit may be read.
    const std::uint8_t* bytes(std::int32_t y) const {
        return reinterpret_cast<const std::uint8_t*>(&words[row(y)]);
    }
    std::int32_t bytesARow() const { return static_cast<std::int32_t>(stride * sizeof(Word)); }
    const Range& columns() const { return box; }

  private:
    using Word = std::uint64_t;
    static constexpr std::size_t kBits = 64;

    std::size_t row(std::int32_t y) const { return stride * static_cast<std::size_t>(y - top); }
    std::size_t bit(std::int32_t x) const { return static_cast<std::size_t>(x - box.from); }

    // The first column from x on that is in the set, or is not; behind the box without one.
    std::int32_t next(std::int32_t x, std::int32_t y, bool in) const {
        if (x > box.to) return box.to + 1;
        const Word *word = &words[row(y) + bit(x) / kBits], *end = &words[row(y) + stride - 1];
        const Word flip = in ? 0 : ~Word{0};
        Word left = (*word ^ flip) & (~Word{0} << (bit(x) % kBits));
        while (left == 0 && word != end) left = *++word ^ flip;
        if (left == 0) return box.to + 1;
        const std::ptrdiff_t before = (word - &words[row(y)]) * static_cast<std::ptrdiff_t>(kBits);
        const auto found = static_cast<std::int32_t>(before) + std::countr_zero(left);
        return std::min(box.from + found, box.to + 1);
    }

    Range box = kNone;
    std::int32_t top = 0;
    std::size_t stride = 0;  // words
    std::vector<Word> words;
};

}  // namespace streakfall
