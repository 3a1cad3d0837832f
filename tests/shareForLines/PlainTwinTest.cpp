// The product's stroke drawing against its plain twin: random strokes on top of each other, equal
// to the bit after each of them.
#include <gtest/gtest.h>

#include <cmath>

#include "Chance.h"
#include "EveryInstructionSet.h"
#include "PaintBox.h"
#include "reference/PlainStroke.h"
#include "shareForLines/trace/LineTracer.h"

namespace streakfall {
namespace {

// Everything that a stroke is drawn from, apart from the depth.
struct Case {
    LineRecord line;
    std::uint8_t red, green, blue;
    double opacity;
};

constexpr int kWidth = 190, kHeight = 130;

Case randomCase(Chance& chance) {
    Case c{};
    const double margin = chance.oneIn(3) ? 60.0 : 5.0;
    c.line.x0 = chance.between(-margin, kWidth + margin);
    c.line.y0 = chance.between(-margin, kHeight + margin);
    const double length =
        chance.oneOf({0.0, 3.0, 20.0, 90.0, 200.0, 400.0}) * chance.between(0.5, 1);
    double angle = chance.between(-3.2, 3.2);
    if (chance.oneIn(4)) angle = 0.78539816339744828 * std::floor(chance.between(0, 8));
    c.line.x1 = c.line.x0 + length * std::cos(angle);
    c.line.y1 = c.line.y0 + length * std::sin(angle);
    if (chance.oneIn(8)) {
        // Whole numbers: places where the rounding of a sum decides a column.
        for (double* v : {&c.line.x0, &c.line.y0, &c.line.x1, &c.line.y1}) *v = std::round(*v);
    }
    c.line.thickness = randomThickness(chance);
    c.line.axialPosition = chance.between(-100, 100);
    c.line.seed = static_cast<std::int32_t>(chance.between(-1e9, 1e9));
    // Few colours, so that strokes meet their own as well as others.
    c.red = static_cast<std::uint8_t>(chance.oneOf({0, 255, 90}));
    c.green = static_cast<std::uint8_t>(chance.oneOf({0, 31}));
    c.blue = c.red;
    c.opacity = randomOpacity(chance);
    return c;
}

void randomForm(Chance& chance, StrokeForm& form) {
    form.inOutEnabled = chance.oneIn(2);
    form.startThicknessRatio = form.inOutEnabled && chance.oneIn(2) ? chance.between(0, 1) : 0.0;
    form.endThicknessRatio = form.inOutEnabled && chance.oneIn(2) ? chance.between(0, 1) : 0.0;
    if (!form.inOutEnabled) form.startThicknessRatio = form.endThicknessRatio = 1.0;
    form.inLength = chance.oneOf({0.0, 0.2, 2.0, 30.0, 150.0, 500.0});
    form.outLength = chance.oneOf({0.0, 0.2, 2.0, 30.0, 150.0, 500.0});
    const bool opacityRamp = chance.oneIn(4);
    form.startOpacity = opacityRamp && chance.oneIn(2) ? chance.between(0, 1) : 1.0;
    form.endOpacity = opacityRamp && chance.oneIn(2) ? chance.between(0, 1) : 1.0;
    form.opacityCenter = opacityRamp ? chance.oneOf({0.0, 0.1, 0.5, 1.0}) : 0.5;
    form.waveEnabled = chance.oneIn(4);
    form.wave.amount = chance.oneOf({-40.0, 5.0, 15.0, 60.0});
    form.wave.amountRandom = chance.between(0, 1);
    form.wave.wavelength = chance.oneOf({1.0, 12.0, 50.0});
    form.wave.wavelengthRandom = chance.between(0, 1);
    form.wave.phase = chance.between(-50, 50);
    form.wave.phaseRandom = chance.between(-50, 50);
}

template <class Depth>
void draw(PaintBox<Depth>& box, StrokeForm& form, const Case& c, bool plain) {
    auto& stroke = static_cast<Stroke<Depth>&>(form);
    stroke.pen = penOf<Depth>(c.red, c.green, c.blue, c.opacity);
    stroke.thickness = c.line.thickness;
    if (plain) {
        reference::traceLine(stroke, box.canvas, c.line);
    } else {
        traceLine(stroke, box.canvas, c.line);
    }
}

template <class Depth>
class PlainTwin : public ::testing::Test {
  public:
    // Draws `strokes` random strokes both ways. Rows are wider than the buffer; the rest of a row
    // must stay as it was.
    void compare(std::uint32_t seed, int strokes, InstructionSet set) {
        const WithInstructionSet with(set);
        Chance chance(seed);
        const int width = chance.oneIn(6) ? 9 : kWidth, height = chance.oneIn(6) ? 7 : kHeight;
        PaintBox<Depth> product(width, height, 3), plain(width, height, 3);
        Stroke<Depth> a, b;
        for (int n = 0; n < strokes; ++n) {
            Chance form(seed + static_cast<std::uint32_t>(n) * 7919u), same = form;
            randomForm(form, a);
            randomForm(same, b);
            const Case c = randomCase(chance);
            draw(product, a, c, false);
            draw(plain, b, c, true);
            const auto difference = product.firstDifference(plain);
            ASSERT_EQ(difference, "") << "seed " << seed << " stroke " << n << " set "
                                      << static_cast<int>(set) << " thickness " << c.line.thickness;
        }
    }

    // Draws one stroke both ways. setUp(form): what differs from a plain stroke.
    template <class SetUp>
    void compareOne(const Case& c, SetUp setUp) {
        PaintBox<Depth> product(kWidth, kHeight, 3), plain(kWidth, kHeight, 3);
        Stroke<Depth> stroke;
        setUp(stroke);
        draw(product, stroke, c, false);
        draw(plain, stroke, c, true);
        EXPECT_GT(plain.painted(), 0u);
        EXPECT_EQ(product.firstDifference(plain), "") << "thickness " << c.line.thickness;
    }
};
TYPED_TEST_SUITE(PlainTwin, Depths);

TYPED_TEST(PlainTwin, RandomStrokes) {
    for (std::uint32_t seed = 0; seed < 60; ++seed) {
        for (const InstructionSet set : everyInstructionSet()) {
            this->compare(seed, set == InstructionSet::kBaseline ? 12 : 60, set);
            if (this->HasFatalFailure()) return;
        }
    }
}

// The radius grows and falls by many pixels a step: the widest dab stands between narrow ones.
TYPED_TEST(PlainTwin, SteepRampsOnAShortThickLine) {
    const Case c{{60, 60, 70, 60, 100.0, 0, 1}, 90, 31, 90, 1.0};
    this->compareOne(c, [](StrokeForm& form) {
        form.inOutEnabled = true;
        form.startThicknessRatio = form.endThicknessRatio = 0.3;
        form.inLength = 0.2;  // of two steps, for the line is ten times as thick as long
        form.outLength = 0.8;
    });
}

// Four thick strokes of many hollow dabs, on top of each other. steepness: largest angle off the
// upright, radians.
template <class Depth>
void compareThickStrokes(std::uint32_t seed, double steepness, double thickness, double wave) {
    constexpr int width = 420, height = 360;
    Chance chance(seed);
    PaintBox<Depth> product(width, height, 0), plain(width, height, 0);
    Stroke<Depth> stroke;
    for (int n = 0; n < 4; ++n) {
        const double length = chance.between(200, 900);
        const double angle =
            1.5707963 + (chance.oneIn(2) ? 0.0 : chance.between(-steepness, steepness));
        Case c{};
        c.line.x0 = chance.between(-60, width + 60);
        c.line.y0 = chance.between(-300, 200);
        c.line.x1 = c.line.x0 + length * std::cos(angle);
        c.line.y1 = c.line.y0 + length * std::sin(angle);
        c.line.thickness = thickness * chance.between(0.2, 1.0);
        c.line.seed = n;
        c.red = static_cast<std::uint8_t>(60 * n);
        c.opacity = chance.oneIn(3) ? chance.oneOf({0.5, kRisingOpacity}) : 1.0;
        stroke.inOutEnabled = chance.oneIn(2);
        stroke.startThicknessRatio = stroke.endThicknessRatio = chance.oneOf({0.0, 0.6});
        stroke.inLength = stroke.outLength = length * chance.between(0, 0.5);
        stroke.waveEnabled = wave > 0.0;
        stroke.wave.amount = chance.between(0.0, wave);
        stroke.wave.wavelength = chance.oneOf({1.0, 30.0, 200.0});
        draw(product, stroke, c, false);
        draw(plain, stroke, c, true);
        ASSERT_EQ(product.firstDifference(plain), "")
            << "seed " << seed << " stroke " << n << " thickness " << c.line.thickness;
    }
}

// Where the ends of a hollow row move by more than a hollow dab keeps of it, pixels inside the
// stroke stay open: on thick lines across the rows, and more so on their ramps.
TYPED_TEST(PlainTwin, OpenPixelsOfThickSteepLines) {
    for (std::uint32_t seed = 0; seed < 10; ++seed) {
        compareThickStrokes<TypeParam>(seed, 0.4, 500.0, 0.0);
    }
}

// A white dab wider than the canvas paints all of it once every pixel is inside, and no sooner: the
// farthest corner lies from a little inside of the circle to a little outside.
TYPED_TEST(PlainTwin, DabsThatJustCoverTheCanvas) {
    for (std::uint32_t seed = 0; seed < 400; ++seed) {
        Chance chance(seed);
        PaintBox<TypeParam> product(23, 17, 3), plain(23, 17, 3);
        Stroke<TypeParam> stroke;
        const double x = chance.between(-60, 80), y = chance.between(-60, 80);
        const double farthest = std::hypot(std::max(x, 22 - x), std::max(y, 16 - y));
        Case c{};
        c.line = {x, y, x, y, 2.0 * (farthest + chance.between(-2.5, 2.5)), 0, 1};
        c.red = 90;
        c.opacity = 1.0;
        draw(product, stroke, c, false);
        draw(plain, stroke, c, true);
        ASSERT_EQ(product.firstDifference(plain), "") << "seed " << seed;
    }
}

// Steps of a wave some hundred pixels long are bridged, those past every slider stay torn.
TYPED_TEST(PlainTwin, LongStepsOfAWave) {
    for (const double amount : {1000.0, 3000.0, 9000.0, 20000.0}) {
        const Case c{{20, 60, 150, 70, 2.5, 0, 1}, 90, 31, 90, 1.0};
        this->compareOne(c, [amount](StrokeForm& form) {
            form.waveEnabled = true;
            form.wave.amount = amount;
            form.wave.wavelength = 1.0;
        });
    }
}

// Waves of all slopes, which cross the canvas' edges and themselves.
TYPED_TEST(PlainTwin, ThickWavedLines) {
    for (std::uint32_t seed = 0; seed < 12; ++seed) {
        compareThickStrokes<TypeParam>(seed, 1.6, seed % 2 == 0 ? 60.0 : 300.0, 80.0);
    }
}

// The line leaves full opacity before the pen has left the first dab, whose middle is hollow.
TYPED_TEST(PlainTwin, FullOpacityShorterThanTheStrokeIsWide) {
    for (const double opacity : {1.0, 0.004}) {
        const Case c{{30, 60, 180, 60, 40.0, 0, 1}, 90, 31, 90, opacity};
        this->compareOne(c, [](StrokeForm& form) {
            form.endOpacity = 0.0;
            form.opacityCenter = 0.1;
        });
    }
}

template <class Depth>
class LongPlainTwin : public PlainTwin<Depth> {};
TYPED_TEST_SUITE(LongPlainTwin, Depths);

TYPED_TEST(LongPlainTwin, RandomStrokes) {
    const Seeds seeds(1000, 100);
    for (std::uint32_t seed = seeds.first; seed < seeds.end; ++seed) {
        for (const InstructionSet set : everyInstructionSet()) {
            this->compare(seed, set == InstructionSet::kBaseline ? 12 : 80, set);
            if (this->HasFatalFailure()) return;
        }
    }
}

}  // namespace
}  // namespace streakfall
