#include "support/SameImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

std::string words(const std::array<double, 4>& argb) {
    std::string text;
    for (const double channel : argb) text.append(" ").append(std::to_string(channel));
    return text;
}

struct Difference {
    long count = 0;
    int firstX = 0, firstY = 0;
    double largest = 0;
};

Difference difference(const standin::Image& a, const standin::Image& b) {
    Difference result;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const std::array<double, 4> p = a.get(x, y), q = b.get(x, y);
            if (p == q) continue;
            if (result.count++ == 0) {
                result.firstX = x;
                result.firstY = y;
            }
            for (std::size_t c = 0; c < 4; ++c) {
                result.largest = std::max(result.largest, std::abs(p[c] - q[c]));
            }
        }
    }
    return result;
}

}  // namespace

void expectSameImage(const standin::Image& actual, const standin::Image& expected) {
    ASSERT_EQ(actual.width(), expected.width());
    ASSERT_EQ(actual.height(), expected.height());
    ASSERT_EQ(actual.depth(), expected.depth());
    if (actual == expected) return;
    const Difference d = difference(actual, expected);
    ADD_FAILURE() << d.count << " pixels differ, by " << d.largest << " at most; the first is ("
                  << d.firstX << ", " << d.firstY << "):\n  actual  "
                  << words(actual.get(d.firstX, d.firstY)) << "\n  expected"
                  << words(expected.get(d.firstX, d.firstY)) << "\n  (alpha red green blue)";
}
