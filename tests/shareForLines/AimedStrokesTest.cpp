// Strokes aimed at where the quick ways end, each over pixels of any colour and alpha: ramps as
// steep as the line, and at the start of their curve, which is not concave; the largest radii;
// single dabs; waves to the ends of the sliders; opacity within a dab's reach.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <type_traits>

#include "Chance.h"
#include "EveryInstructionSet.h"
#include "PaintBox.h"
#include "reference/PlainStroke.h"
#include "shareForLines/trace/LineTracer.h"

namespace streakfall {
namespace {

constexpr int kWidth = 130, kHeight = 90;
constexpr double kEighthTurn = 0.78539816339744828;

struct Aimed {
    LineRecord line{};
    double opacity = 1.0;
    bool noColor = false;  // in float a channel holds a NaN
    std::function<void(StrokeForm&)> setForm = [](StrokeForm&) {};
};

// Puts the line so that the edge of its dab `along` pixels from the start, of that radius, crosses
// the canvas.
void aim(Chance& chance, Aimed& a, double angle, double length, double along, double radius) {
    const double ux = std::cos(angle), uy = std::sin(angle);
    // Beside the line, or anywhere round the dab.
    const double side = chance.oneIn(2) ? (chance.oneIn(2) ? 0.5 : -0.5) * 3.1415926535897932
                                        : chance.between(-3.2, 3.2);
    const double x = chance.between(0, kWidth), y = chance.between(0, kHeight);
    a.line.x0 = x - radius * std::cos(angle + side) - along * ux;
    a.line.y0 = y - radius * std::sin(angle + side) - along * uy;
    a.line.x1 = a.line.x0 + length * ux;
    a.line.y1 = a.line.y0 + length * uy;
    a.line.seed = chance.below(1000);
    a.opacity = randomOpacity(chance);
}

double anyAngle(Chance& chance) {
    return chance.oneIn(3) ? kEighthTurn * chance.below(8) : chance.between(-3.2, 3.2);
}

// A ramp that grows by `growth` a pixel makes an edge that leans by its arc sine: on lines that
// lean as much the other way it lies along the rows, the columns or the diagonal.
Aimed rampCase(Chance& chance) {
    Aimed a;
    const double half = chance.oneOf({8.0, 20.0, 60.0, 250.0, 2048.0}) * chance.between(0.6, 1.0);
    const double thin = chance.oneIn(2) ? 0.0 : chance.between(0.0, 0.98);
    const double growth =
        std::max(chance.between(0.02, chance.oneIn(5) ? 1.5 : 0.8), half * (1.0 - thin) / 4000.0);
    constexpr double kSlopes[] = {1.2685, 1.3388, 1.0,
                                  0.5};  // of the curve: start, steepest, later
    const double ramp = half * (1.0 - thin) * chance.oneOf(kSlopes) / growth + 2.0;
    const double length = ramp + chance.oneOf({0.0, 5.0, 60.0, 2.2 * half});
    const double part = chance.oneIn(2) ? chance.between(0.0, 0.1) : chance.between(0.0, 1.0);
    const double lean = std::asin(std::min(growth, 1.0)) * (chance.oneIn(2) ? 1.0 : -1.0);
    double angle = lean + kEighthTurn * chance.below(8);
    if (chance.oneIn(3)) angle += chance.between(-0.02, 0.02);
    aim(chance, a, angle, length, part * ramp, half * (thin + (1.0 - thin) * 1.3 * part));
    a.line.thickness = 2.0 * half;
    const bool atEnd = chance.oneIn(2), opacityRamp = chance.oneIn(5);
    if (atEnd) {
        std::swap(a.line.x0, a.line.x1);
        std::swap(a.line.y0, a.line.y1);
    }
    a.setForm = [=](StrokeForm& form) {
        form.inOutEnabled = true;
        (atEnd ? form.endThicknessRatio : form.startThicknessRatio) = thin;
        (atEnd ? form.outLength : form.inLength) = ramp;
        // A line thicker than long has ramps longer by as much.
        if (a.line.thickness > length) {
            form.inLength *= length / a.line.thickness;
            form.outLength *= length / a.line.thickness;
        }
        if (opacityRamp) form.startOpacity = 0.3;
    };
    return a;
}

// From where runs end to past the largest thickness that is drawn.
Aimed largestCase(Chance& chance) {
    Aimed a;
    const double radius = chance.oneOf({650.0, 1400.0, 2000.0, 2150.0}) * chance.between(0.9, 1.1);
    const double length = chance.oneOf({0.0, 1.0, 12.0, 120.0});
    aim(chance, a, anyAngle(chance), length, length * chance.between(0, 1),
        std::min(radius, 2048.0));
    a.line.thickness = 2.0 * radius;
    return a;
}

Aimed dotCase(Chance& chance) {
    Aimed a;
    const double radius =
        chance.oneOf({3.0, 5.0, 6.0, 12.0, 45.0, 400.0}) * chance.between(0.9, 1.3);
    aim(chance, a, anyAngle(chance), chance.oneOf({0.0, 0.4, 1.0}), 0.0, radius);
    a.line.thickness = 2.0 * radius;
    return a;
}

Aimed waveCase(Chance& chance) {
    Aimed a;
    const double amount = chance.oneOf({-1000.0, 1000.0, 300.0, 40.0}) * chance.between(0.5, 1.0);
    const double wavelength = chance.oneOf({1.0, 5.0, 30.0, 300.0, 1000.0});
    const double radius = chance.oneOf({1.0, 5.0, 15.0, 80.0, 250.0}) * chance.between(0.8, 1.0);
    const double steep = 1.0 + 1.4 * std::fabs(amount) / std::max(4.0, wavelength);
    const double length = std::min(200.0, 1500.0 / steep) + 4.0;
    aim(chance, a, anyAngle(chance), length, length * chance.between(0, 1), radius);
    a.line.thickness = 2.0 * radius;
    const double random = chance.oneIn(2) ? 0.0 : chance.between(0, 1);
    const double phase = chance.between(-100, 100);
    const bool ramps = chance.oneIn(3);
    a.setForm = [=](StrokeForm& form) {
        form.waveEnabled = true;
        form.wave.amount = amount;
        form.wave.amountRandom = form.wave.wavelengthRandom = random;
        form.wave.wavelength = wavelength;
        form.wave.phase = phase;
        form.inOutEnabled = ramps;
        if (ramps) form.inLength = form.outLength = 0.4 * length;
        if (ramps) form.startThicknessRatio = form.endThicknessRatio = 0.2;
    };
    return a;
}

std::function<void(StrokeForm&)> waved(const WaveTable& wave) {
    return [=](StrokeForm& form) {
        form.waveEnabled = true;
        form.wave = wave;
    };
}

// A ramp that grows nearly as fast as the line runs, on a wave about the diagonal.
Aimed wavedRampCase(Chance& chance) {
    Aimed a;
    const double thin = chance.between(5.0, 25.0), rise = chance.between(30.0, 120.0);
    const double ramp = 1.3 * rise / chance.between(0.55, 0.85), half = thin + rise;
    const double angle = kEighthTurn * (1 + 2 * chance.below(4)) + chance.between(-0.13, 0.13);
    const double length = ramp + 2.0 * half + 20.0;
    a.line.x0 = chance.between(0.3, 0.7) * kWidth;
    a.line.y0 = chance.between(0.3, 0.7) * kHeight;
    a.line.x1 = a.line.x0 + length * std::cos(angle);
    a.line.y1 = a.line.y0 + length * std::sin(angle);
    a.line.thickness = 2.0 * half;
    WaveTable wave{};
    wave.amount = chance.between(0.0, 8.0);
    wave.wavelength = chance.between(20.0, 80.0);
    wave.wavelengthRandom = chance.between(0.0, 1.0);
    wave.phase = chance.between(0.0, 1.0);
    a.setForm = [=](StrokeForm& form) {
        waved(wave)(form);
        form.inOutEnabled = true;
        form.startThicknessRatio = thin / half;
        form.inLength = ramp;
    };
    return a;
}

// Opacity that begins to fall on the canvas, or that rises and falls within the reach of a dab; on
// waves, too, whose runs of dabs are short.
Aimed opacityCase(Chance& chance) {
    Aimed a;
    const bool falls = chance.oneIn(2);
    const double radius = chance.oneOf({7.0, 20.0, 60.0}) * chance.between(0.8, 1.2);
    const double length = falls ? chance.between(300, 900) : chance.between(0.1, 3.0) * radius;
    const double along = chance.between(0, length);
    aim(chance, a, anyAngle(chance), length, along, radius);
    a.line.thickness = 2.0 * radius;
    if (chance.oneIn(2)) a.opacity = 1.0;
    const double centre = falls ? std::min(chance.between(0.9, 1.1) * along / length, 0.99)
                                : chance.oneOf({0.999, 0.8, 0.4});
    const double end = chance.oneOf({0.0, 0.3});
    WaveTable wave{};
    wave.amount = chance.oneIn(3) ? 0.0 : chance.between(3, 40);
    wave.wavelength = chance.between(8, 80);
    a.setForm = [=](StrokeForm& form) {
        if (wave.amount != 0.0) waved(wave)(form);
        form.opacityCenter = centre;
        form.startOpacity = falls ? 1.0 : 0.0;
        form.endOpacity = end;
    };
    return a;
}

// So few dabs deep inside that their paint barely brings a colour to rest: a merge of about 50 %
// over as much halves a difference.
Aimed restCase(Chance& chance) {
    Aimed a;
    const double radius = chance.between(20, 200), length = chance.between(3, 12);
    aim(chance, a, anyAngle(chance), length, chance.between(0, length),
        radius * chance.between(0.0, 1.0));
    a.line.thickness = 2.0 * radius;
    a.opacity = chance.between(0.5, 0.52);
    const double start = chance.oneIn(2) ? 1.0 : chance.between(0.97, 1.0);
    a.setForm = [=](StrokeForm& form) {
        form.opacityCenter = 0.999;
        form.startOpacity = start;
    };
    return a;
}

// A channel of the pen holds no number, and the pen equals no colour, its own neither.
Aimed noColorCase(Chance& chance) {
    Aimed a = chance.oneIn(2)   ? dotCase(chance)
              : chance.oneIn(2) ? waveCase(chance)
                                : opacityCase(chance);
    a.noColor = true;
    return a;
}

// Any colours and alphas, those of the pen among them.
template <class Depth>
void fillWithNoise(Chance& chance, PaintBox<Depth>& box, const typename Depth::Pixel& pen) {
    const int emptyOneIn = chance.oneIn(3) ? 1 : 4;
    auto pixel = pen;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            // Patches of a few pixels, as strokes leave them.
            if (chance.oneIn(3)) {
                const auto any = [&] { return static_cast<std::uint8_t>(chance.below(256)); };
                pixel = chance.oneIn(4) ? pen : penOf<Depth>(any(), any(), any());
                pixel.alpha = Depth::penAlpha(chance.oneIn(3) ? 1.0 : chance.between(0, 1));
                if (chance.oneIn(emptyOneIn)) pixel = {};
            }
            box.at(x, y) = pixel;
        }
    }
}

// Returns whether the stroke changes a pixel.
template <class Depth>
bool compareStroke(Chance& chance, const Aimed& a, std::uint32_t seed) {
    Stroke<Depth> stroke;
    a.setForm(stroke);
    stroke.thickness = a.line.thickness;
    stroke.pen = penOf<Depth>(90, 31, 200, a.opacity);
    // The one NaN that arithmetic makes here.
    if constexpr (std::is_same_v<Depth, DepthFloat>) {
        if (a.noColor) stroke.pen.red = std::bit_cast<float>(0xFFC00000u);
    }
    PaintBox<Depth> noise(kWidth, kHeight, 3), plain(kWidth, kHeight, 3);
    fillWithNoise(chance, noise, stroke.pen);
    plain.storage = noise.storage;
    reference::traceLine(stroke, plain.canvas, a.line);
    for (const InstructionSet set : everyInstructionSet()) {
        const WithInstructionSet with(set);
        PaintBox<Depth> product(kWidth, kHeight, 3);
        product.storage = noise.storage;
        traceLine(stroke, product.canvas, a.line);
        EXPECT_EQ(product.firstDifference(plain), "")
            << "seed " << seed << ", instruction set " << static_cast<int>(set) << ", line "
            << a.line.x0 << " " << a.line.y0 << " to " << a.line.x1 << " " << a.line.y1
            << ", thickness " << a.line.thickness << ", opacity " << a.opacity;
    }
    return !plain.firstDifference(noise).empty();
}

template <class Depth>
void compareAimed(const Seeds& seeds, Aimed (*makeCase)(Chance&)) {
    std::uint32_t painted = 0;
    for (std::uint32_t seed = seeds.first; seed < seeds.end; ++seed) {
        Chance chance(seed);
        const Aimed a = makeCase(chance);
        painted += compareStroke<Depth>(chance, a, seed) ? 1 : 0;
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(painted, (seeds.end - seeds.first) / 2) << "aimed beside the canvas";
}

template <class Depth>
class AimedStrokes : public ::testing::Test {};
TYPED_TEST_SUITE(AimedStrokes, Depths);

TYPED_TEST(AimedStrokes, RampsAsSteepAsTheLine) { compareAimed<TypeParam>({0, 16}, rampCase); }
TYPED_TEST(AimedStrokes, LargestRadii) { compareAimed<TypeParam>({0, 12}, largestCase); }
TYPED_TEST(AimedStrokes, SingleDabs) { compareAimed<TypeParam>({0, 150}, dotCase); }
TYPED_TEST(AimedStrokes, Waves) { compareAimed<TypeParam>({0, 12}, waveCase); }

TYPED_TEST(AimedStrokes, RampsOnWaves) { compareAimed<TypeParam>({100, 40}, wavedRampCase); }

TYPED_TEST(AimedStrokes, OpacityRamps) { compareAimed<TypeParam>({0, 60}, opacityCase); }

TYPED_TEST(AimedStrokes, ColorsThatBarelyRest) { compareAimed<TypeParam>({0, 60}, restCase); }
TEST(AimedFloatStrokes, PensWithoutAColor) { compareAimed<DepthFloat>({0, 60}, noColorCase); }

// The nearest dab leaves a corner pixel of a cap that the one before it plots.
TYPED_TEST(AimedStrokes, CornerOfACap) {
    Aimed a;
    a.line = {.x0 = 110.43809414015784,
              .y0 = -83.19134141025684,
              .x1 = 74.637286557366082,
              .y1 = -151.84290568364057,
              .thickness = 274.39555129030083,
              .axialPosition = 927.685,
              .seed = 217503549};
    WaveTable wave{};
    wave.amount = 0.216791;
    wave.wavelength = 99.7284;
    wave.wavelengthRandom = 0.683877;
    wave.phase = 0.436544;
    a.setForm = waved(wave);
    Chance chance(0);
    while (!chance.oneIn(3)) {
    }  // no noise comes next
    compareStroke<TypeParam>(chance, a, 0);
}

template <class Depth>
class LongAimedStrokes : public ::testing::Test {};
TYPED_TEST_SUITE(LongAimedStrokes, Depths);

TYPED_TEST(LongAimedStrokes, RampsAsSteepAsTheLine) {
    compareAimed<TypeParam>({1000, 100}, rampCase);
}
TYPED_TEST(LongAimedStrokes, LargestRadii) { compareAimed<TypeParam>({1000, 80}, largestCase); }
TYPED_TEST(LongAimedStrokes, SingleDabs) { compareAimed<TypeParam>({1000, 2000}, dotCase); }
TYPED_TEST(LongAimedStrokes, Waves) { compareAimed<TypeParam>({1000, 80}, waveCase); }
TYPED_TEST(LongAimedStrokes, ColorsThatBarelyRest) {
    compareAimed<TypeParam>({1000, 400}, restCase);
}
TYPED_TEST(LongAimedStrokes, OpacityRamps) { compareAimed<TypeParam>({1000, 400}, opacityCase); }
TYPED_TEST(LongAimedStrokes, RampsOnWaves) { compareAimed<TypeParam>({1000, 200}, wavedRampCase); }

}  // namespace
}  // namespace streakfall
