// A frame's list drawn by the product, on every instruction set, against its plain twin.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "EveryInstructionSet.h"
#include "LineList.h"
#include "ListCase.h"
#include "PaintBox.h"
#include "reference/PlainStroke.h"

namespace streakfall {

// Draws the case's list. play(stroke, canvas, lines, penOf): the product or its twin.
template <class Depth, class Play>
void drawCase(PaintBox<Depth>& box, const ListCase& c, Play play) {
    Stroke<Depth> stroke;
    c.setForm(stroke);
    const auto base = penOf<Depth>(c.red, c.green, c.blue, c.opacity);
    play(stroke, box.canvas, c.lines, [&](std::size_t i) {
        typename Depth::Pixel pen;
        jitterColor<Depth>(pen, base, c.amounts, static_cast<std::uint32_t>(c.lines[i].seed), 0);
        return pen;
    });
}

template <class Depth>
void drawByTwin(PaintBox<Depth>& box, const ListCase& c) {
    drawCase(box, c, [](auto& stroke, auto& canvas, const auto& lines, auto penOf) {
        reference::drawLineList(stroke, canvas, lines, penOf);
    });
}

template <class Depth>
std::string differenceFrom(const PaintBox<Depth>& plain, const ListCase& c, InstructionSet set) {
    const WithInstructionSet with(set);
    PaintBox<Depth> product(c.width, c.height, 3);
    drawCase(product, c, [](auto& stroke, auto& canvas, const auto& lines, auto penOf) {
        drawLineList(stroke, canvas, lines, penOf);
    });
    return product.firstDifference(plain);
}

// The same case with as few lines as still differ, found by leaving out ever smaller parts.
template <class Depth>
ListCase shrunk(ListCase c, InstructionSet set) {
    const auto differs = [set](const ListCase& part) {
        PaintBox<Depth> plain(part.width, part.height, 3);
        drawByTwin(plain, part);
        return !differenceFrom(plain, part, set).empty();
    };
    for (std::size_t part = c.lines.size() / 2; part > 0; part /= 2) {
        for (std::size_t from = 0; from + part <= c.lines.size() && c.lines.size() > part;) {
            ListCase less = c;
            const auto first = less.lines.begin() + static_cast<std::ptrdiff_t>(from);
            less.lines.erase(first, first + static_cast<std::ptrdiff_t>(part));
            if (differs(less)) {
                c = std::move(less);
            } else {
                from += part;
            }
        }
    }
    return c;
}

// Rows are wider than the buffer; the rest of a row must stay as it was. Returns how many pixels
// the list paints.
template <class Depth>
std::size_t expectSameList(const ListCase& c, std::uint32_t seed) {
    PaintBox<Depth> plain(c.width, c.height, 3);
    drawByTwin(plain, c);
    for (const InstructionSet set : everyInstructionSet()) {
        const std::string difference = differenceFrom(plain, c, set);
        if (difference.empty()) continue;
        ADD_FAILURE() << "seed " << seed << ", instruction set " << static_cast<int>(set) << ": "
                      << difference << "\n"
                      << c.words() << "\nand with as few lines as differ:\n"
                      << shrunk<Depth>(c, set).words();
    }
    return plain.painted();
}

}  // namespace streakfall
