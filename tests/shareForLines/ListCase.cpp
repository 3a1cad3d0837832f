#include "ListCase.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "lines/LineField.h"

namespace streakfall {
namespace {

// What a stroke's form is set to, so that several strokes can be set alike.
struct Form {
    bool inOut = false;
    double startThickness = 1, endThickness = 1;
    double inLength = 0, outLength = 0;
    double startOpacity = 1, endOpacity = 1, opacityCenter = 0.5;
    bool wave = false;
    double amount = 0, amountRandom = 0, wavelength = 1, wavelengthRandom = 0;
    double phase = 0, phaseRandom = 0;

    void set(StrokeForm& f) const {
        f.inOutEnabled = inOut;
        f.startThicknessRatio = startThickness;
        f.endThicknessRatio = endThickness;
        f.inLength = inLength;
        f.outLength = outLength;
        f.startOpacity = startOpacity;
        f.endOpacity = endOpacity;
        f.opacityCenter = opacityCenter;
        f.waveEnabled = wave;
        f.wave.amount = amount;
        f.wave.amountRandom = amountRandom;
        f.wave.wavelength = wavelength;
        f.wave.wavelengthRandom = wavelengthRandom;
        f.wave.phase = phase;
        f.wave.phaseRandom = phaseRandom;
    }
};

// length: nominal, pixels.
Form randomForm(Chance& chance, double length) {
    Form f;
    if (!chance.oneIn(4)) {
        f.inOut = true;
        f.startThickness = chance.oneIn(2) ? 0.0 : chance.between(0, 1);
        f.endThickness = chance.oneIn(2) ? 0.0 : chance.between(0, 1);
        f.inLength = length * chance.oneOf({0.0, 0.05, 0.2, 0.45, 1.0, 2.0});
        f.outLength = length * chance.oneOf({0.0, 0.05, 0.2, 0.45, 1.0, 2.0});
    }
    if (chance.oneIn(4)) {
        f.startOpacity = chance.oneIn(3) ? 1.0 : chance.between(0, 1);
        f.endOpacity = chance.oneIn(3) ? 1.0 : chance.between(0, 1);
        f.opacityCenter = chance.oneOf({0.0, 0.1, 0.5, 0.9, 1.0});
    }
    if (chance.oneIn(3)) {
        f.wave = true;
        f.amount = chance.oneOf({-40.0, 5.0, 15.0, 60.0, 200.0});
        if (chance.oneIn(8)) f.amount = chance.between(-1000, 1000);
        f.amountRandom = chance.oneIn(2) ? 0.0 : chance.between(0, 1);
        f.wavelength = chance.oneOf({1.0, 12.0, 50.0, 200.0});
        f.wavelengthRandom = chance.oneIn(2) ? 0.0 : chance.between(0, 1);
        f.phase = chance.between(-100, 100);
        f.phaseRandom = chance.between(-100, 100);
    }
    return f;
}

// One colour, one a line, or a few that come again.
void colorRandomly(Chance& chance, ListCase& c) {
    const auto channel = [&] { return static_cast<std::uint8_t>(chance.below(256)); };
    c.red = channel();
    c.green = channel();
    c.blue = channel();
    c.opacity = randomOpacity(chance);
    if (chance.oneIn(3)) return;
    c.amounts = {chance.between(0, 1), chance.between(0, 1), chance.between(0, 1)};
    if (chance.oneIn(2)) return;
    const int seeds = 1 + chance.below(4);
    for (LineRecord& line : c.lines) line.seed = static_cast<std::int32_t>(line.seed % seeds);
}

LineRecord lineAbout(double x, double y, double angle, double length, double thickness) {
    const double dx = 0.5 * length * std::cos(angle), dy = 0.5 * length * std::sin(angle);
    return {x - dx, y - dy, x + dx, y + dy, thickness, 0.0, 0};
}

// Often thick, since what later lines hide is decided there.
double listThickness(Chance& chance) {
    return chance.oneIn(3) ? chance.between(12.0, 90.0) : randomThickness(chance);
}

// Lines of one kind, added to the list.
void addLines(Chance& chance, ListCase& c) {
    const double w = c.width, h = c.height, size = w + h;
    const double angle =
        chance.oneIn(3) ? 0.78539816339744828 * chance.below(8) : chance.between(-3.2, 3.2);
    const double x = chance.between(-0.1 * w, 1.1 * w), y = chance.between(-0.1 * h, 1.1 * h);
    const double length = size * chance.oneOf({0.0, 0.02, 0.2, 0.6, 1.5});
    const double thickness = listThickness(chance);
    const int kind = chance.below(4);
    const int count = 1 + chance.below(kind == 0 ? 20 : 80);
    for (int i = 0; i < count; ++i) {
        const double varied = thickness * chance.between(0.3, 1.0);
        const double px = chance.between(-0.2 * w, 1.2 * w), py = chance.between(-0.2 * h, 1.2 * h);
        LineRecord line;
        switch (kind) {
            case 0:  // all over, each of its own kind
                line = lineAbout(px, py, chance.between(-3.2, 3.2), chance.between(0.0, size),
                                 randomThickness(chance));
                break;
            case 1:  // a bundle, side by side and over each other
                line = lineAbout(px, py, angle, length, varied);
                break;
            case 2:  // a fan
                line = lineAbout(px, py, std::atan2(py - y, px - x), length, varied);
                break;
            default:  // the same line again, a little aside
                line = lineAbout(x + chance.between(-2, 2), y + chance.between(-2, 2), angle,
                                 length, varied);
        }
        if (chance.oneIn(12)) {
            // Whole numbers: places where the rounding of a sum decides a column.
            for (double* v : {&line.x0, &line.y0, &line.x1, &line.y1}) *v = std::round(*v);
        }
        line.axialPosition = chance.between(-500, 500);
        line.seed = chance.below(1 << 30);
        c.lines.push_back(line);
    }
}

// Dabs of a line that may come near a canvas of this size, roughly.
double dabCount(const LineRecord& line, const StrokeForm& form, const ListCase& c) {
    const double seen = 1.5 * (c.width + c.height) + line.thickness;
    const double steps = std::min(std::hypot(line.x1 - line.x0, line.y1 - line.y0), seen) + 1.0;
    if (!form.waveEnabled) return steps;
    return steps * (1.0 + 1.4 * std::fabs(form.wave.amount) / std::max(4.0, form.wave.wavelength));
}

}  // namespace

std::string ListCase::words() const {
    StrokeForm form;
    setForm(form);
    char text[400];
    std::snprintf(text, sizeof text,
                  "%d x %d, %zu lines, color %d %d %d, opacity %g, jitter %g %g %g, ramps %d (%g "
                  "in %g, %g in %g), opacity ramp %g %g %g, wave %d (%g of %g)",
                  width, height, lines.size(), red, green, blue, opacity, amounts.hue,
                  amounts.saturation, amounts.value, form.inOutEnabled, form.startThicknessRatio,
                  form.inLength, form.endThicknessRatio, form.outLength, form.startOpacity,
                  form.opacityCenter, form.endOpacity, form.waveEnabled, form.wave.amount,
                  form.wave.wavelength);
    std::string all = text;
    for (std::size_t i = 0; i < std::min<std::size_t>(lines.size(), 6); ++i) {
        const LineRecord& l = lines[i];
        std::snprintf(text, sizeof text, "\n  {%.17g, %.17g, %.17g, %.17g, %.17g, %.17g, %d}", l.x0,
                      l.y0, l.x1, l.y1, l.thickness, l.axialPosition, l.seed);
        all += text;
    }
    return all;
}

void limitWork(ListCase& c, double pixels) {
    StrokeForm form;
    c.setForm(form);
    const bool hollow = form.startOpacity == 1.0 && form.endOpacity == 1.0;
    double work = 0;
    std::size_t count = 0;
    for (const LineRecord& line : c.lines) {
        const double across = std::min(line.thickness + 2.0, 1.0 * c.width);
        const double down = std::min(line.thickness + 2.0, 1.0 * c.height);
        const double middle =
            hollow && line.thickness > 30.0 ? 20.0 * (across + down) : across * down;
        const double dab = middle + 8.0 * line.thickness;  // the outline, also off the canvas
        work += dab * dabCount(line, form, c);
        if (work > pixels && count > 0) break;
        ++count;
    }
    c.lines.resize(count);
}

ListCase randomField(std::uint32_t seed, int width, int height) {
    Chance chance(seed);
    ListCase c;
    c.width = width;
    c.height = height;
    const double thickness = listThickness(chance);
    const double length = chance.oneOf({3.0, 30.0, 100.0, 400.0, 2000.0}) * chance.between(0.5, 1);
    const Form form = randomForm(chance, length);
    c.setForm = [form](StrokeForm& f) { form.set(f); };
    LineField field(0.0, 0.0, width, height, std::fabs(form.amount) + thickness, 1.0);
    field.startX = chance.between(0, width);
    field.startY = chance.between(0, height);
    const double angle =
        chance.oneIn(3) ? 0.78539816339744828 * chance.below(8) : chance.between(-3.2, 3.2);
    field.endX = field.startX + 50.0 * std::cos(angle);
    field.endY = field.startY + 50.0 * std::sin(angle);
    field.length = chance.oneIn(4) ? -length : length;
    field.lengthRandom = chance.between(0, 1);
    field.offset = chance.oneIn(3) ? chance.between(-300, 300) : 0.0;
    field.offsetRandom = chance.between(0, 2);
    field.thickness = thickness;
    field.thicknessRandom = chance.oneIn(2) ? chance.between(0, 1.5) : 0.0;
    field.density = chance.oneOf({5.0, 20.0, 80.0, 200.0, 1000.0});
    field.densityRandom = chance.between(0, 4);
    field.repeat = !chance.oneIn(3);
    field.repeatRandomCount = chance.below(10);
    field.repeatInterval = chance.between(0, 100);
    field.randomSeed = chance.below(3);
    if (chance.oneIn(3)) {
        field.groupLines = chance.between(0, 0.5);
        field.linesRandom = chance.between(0, 1);
        field.attraction = chance.between(0, 1);
        field.groupOffsetRandom = chance.between(0, 2);
        field.intervalRandom = chance.between(0, 5);
    }
    if (chance.oneIn(3)) {
        field.taperEnabled = true;
        field.taper = chance.between(-1, 1);
        field.baseLength = chance.between(0, 500);
        field.archRate = chance.between(0.01, 2);
        field.bandMode = chance.oneIn(2) ? LineField::kArch : LineField::kFixedBand;
    }
    field.generate(c.lines);
    colorRandomly(chance, c);
    return c;
}

ListCase randomList(std::uint32_t seed, int width, int height) {
    Chance chance(seed);
    ListCase c;
    c.width = width;
    c.height = height;
    const Form form = randomForm(chance, chance.between(10, width + height));
    c.setForm = [form](StrokeForm& f) { form.set(f); };
    for (int kinds = 1 + chance.below(4); kinds > 0; --kinds) addLines(chance, c);
    // Thick and thin in turn, in half of them.
    if (chance.oneIn(2)) {
        for (std::size_t i = c.lines.size(); i > 1; --i) {
            std::swap(c.lines[i - 1],
                      c.lines[static_cast<std::size_t>(chance.below(static_cast<int>(i)))]);
        }
    }
    colorRandomly(chance, c);
    return c;
}

ListCase randomCover(std::uint32_t seed, int width, int height) {
    Chance chance(seed);
    ListCase c;
    c.width = width;
    c.height = height;
    Form form = randomForm(chance, chance.between(20, width + height));
    if (!chance.oneIn(4)) form.startOpacity = form.endOpacity = 1.0;
    if (!chance.oneIn(4)) form.wave = false;
    c.setForm = [form](StrokeForm& f) { form.set(f); };
    const double thickness = chance.between(5.0, chance.oneIn(3) ? 80.0 : 20.0);
    const double angle = chance.between(-3.2, 3.2), spread = chance.oneOf({0.0, 0.1, 3.2});
    double area = 0.0;
    while (area < 4.0 * width * height && c.lines.size() < 400) {
        const double length = chance.between(0.0, width + height);
        const double varied = thickness * chance.between(0.5, 1.0);
        LineRecord line = lineAbout(chance.between(0, width), chance.between(0, height),
                                    angle + chance.between(-spread, spread), length, varied);
        line.seed = chance.below(1 << 30);
        area += varied * (length + varied);
        c.lines.push_back(line);
    }
    c.amounts = {1.0, 1.0, 1.0};
    return c;
}

ListCase randomSteepCover(std::uint32_t seed, int width, int height) {
    Chance chance(seed);
    ListCase c;
    c.width = width;
    c.height = height;
    const double thickness = chance.between(60.0, 240.0),
                 length = thickness * chance.between(1.5, 6);
    Form form = randomForm(chance, length);
    form.startOpacity = form.endOpacity = 1.0;
    form.wave = false;
    c.setForm = [form](StrokeForm& f) { form.set(f); };
    const double angle = chance.oneOf({1.5707963, -1.5707963}) + chance.between(-0.4, 0.4);
    const double step = chance.between(2.0, 20.0), over = thickness + chance.between(0.0, 100.0);
    for (double x = -over; x < width + over && c.lines.size() < 150; x += step) {
        const double y = 0.5 * height + chance.between(-0.5, 0.5) * length;
        LineRecord line = lineAbout(x, y, angle, length, thickness * chance.between(0.9, 1.0));
        line.seed = chance.below(1 << 30);
        c.lines.push_back(line);
    }
    c.amounts = {1.0, 1.0, 1.0};
    return c;
}

}  // namespace streakfall
