#include "Scenes.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>

#include "Random32.h"

namespace bench {
namespace {

constexpr double kPi = 3.14159265358979323846;

// Coordinates have four decimals, so that a list written to a text file is the same list.
double fourDecimals(double v) {
    char text[64];
    std::snprintf(text, sizeof text, "%.4f", v);
    return std::strtod(text, nullptr);
}

streakfall::LineRecord lineAbout(double cx, double cy, double angle, double length,
                                 double thickness) {
    const double hx = std::cos(angle) * length * 0.5, hy = std::sin(angle) * length * 0.5;
    return {fourDecimals(cx - hx),
            fourDecimals(cy - hy),
            fourDecimals(cx + hx),
            fourDecimals(cy + hy),
            fourDecimals(thickness),
            0.0,
            0};
}

// Parallel lines: slots spread evenly across the axis, middles inside the frame.
void parallelField(Scene& scene, Random32& random, std::size_t count, double degrees,
                   double thinnest, double thickest) {
    const double angle = degrees * (kPi / 180.0);
    const double ca = std::cos(angle), sa = std::sin(angle);
    const double halfAxial = 0.5 * (std::fabs(scene.width * ca) + std::fabs(scene.height * sa));
    const double halfLateral = 0.5 * (std::fabs(scene.width * sa) + std::fabs(scene.height * ca));
    while (scene.lines.size() < count) {
        const double slot =
            (static_cast<double>(scene.lines.size()) + random.unit()) / static_cast<double>(count);
        const double lateral = halfLateral * (2.0 * slot - 1.0);
        const double axial = random.between(-halfAxial, halfAxial);
        const double cx = scene.width * 0.5 + axial * ca - lateral * sa;
        const double cy = scene.height * 0.5 + axial * sa + lateral * ca;
        if (cx >= 0 && cx < scene.width && cy >= 0 && cy < scene.height) {
            const double thickness = random.between(thinnest, thickest);
            scene.lines.push_back(lineAbout(cx, cy, angle, scene.length, thickness));
        }
    }
}

// Lines that radiate from the middle of the frame, in all directions.
void fanField(Scene& scene, Random32& random, std::size_t count, double thinnest, double thickest) {
    while (scene.lines.size() < count) {
        const double cx = random.between(0.0, scene.width);
        const double cy = random.between(0.0, scene.height);
        const double angle = std::atan2(cy - scene.height * 0.5, cx - scene.width * 0.5);
        const double thickness = random.between(thinnest, thickest);
        scene.lines.push_back(lineAbout(cx, cy, angle, scene.length, thickness));
    }
}

}  // namespace

void setUpRamps(streakfall::StrokeForm& stroke, const Scene& scene) {
    stroke.inOutEnabled = scene.ramp > 0.0;
    stroke.startThicknessRatio = stroke.endThicknessRatio = scene.ramp > 0.0 ? 0.0 : 1.0;
    stroke.inLength = stroke.outLength = scene.ramp * scene.length;
}

std::vector<Scene> makeScenes() {
    std::vector<Scene> scenes{{"A default-like", 1920, 1080, 500.0, 0.45, {}},
                              {"B dense", 1920, 1080, 900.0, 0.30, {}},
                              {"C thick", 1920, 1080, 1200.0, 0.20, {}},
                              {"D hair", 3840, 2160, 1500.0, 0.45, {}}};
    const auto random = [](std::uint32_t index) { return Random32(0x9E3779B9u + index * 7919u); };
    Random32 a = random(0), b = random(1), c = random(2), d = random(3);
    parallelField(scenes[0], a, 90, 25.0, 5.0, 5.0);
    fanField(scenes[1], b, 2000, 1.0, 12.0);
    parallelField(scenes[2], c, 300, -12.0, 60.0, 120.0);
    fanField(scenes[3], d, 4000, 1.0, 3.0);
    for (Scene& scene : scenes) {
        for (std::size_t i = 0; i < scene.lines.size(); ++i) {
            scene.lines[i].seed = static_cast<std::int32_t>(i);
        }
    }
    return scenes;
}

}  // namespace bench
