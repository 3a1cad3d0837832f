#include "CairoLines.h"

#include <cairo.h>

#include <cmath>
#include <cstring>

namespace bench {
namespace {

constexpr int kRampPoints = 16;  // outline points along each ramp

// Half the thickness at part t of the line.
double halfWidthAt(const Scene& scene, streakfall::StrokeShape& ramp, double t, double half) {
    const double u = std::min(t, 1.0 - t) / scene.ramp;
    ramp.cursor = 0;
    return u >= 1.0 ? half : half * streakfall::shapeValue(ramp, u);
}

void outline(cairo_t* cairo, const Scene& scene, streakfall::StrokeShape& ramp,
             const streakfall::LineRecord& line) {
    const double dx = line.x1 - line.x0, dy = line.y1 - line.y0;
    const double length = std::sqrt(dx * dx + dy * dy);
    const double nx = -dy / length, ny = dx / length;
    double stations[2 * kRampPoints + 2];
    for (int i = 0; i <= kRampPoints; ++i) {
        stations[i] = scene.ramp * i / kRampPoints;
        stations[2 * kRampPoints + 1 - i] = 1.0 - stations[i];
    }
    const auto point = [&](double t, double side) {
        const double w = side * halfWidthAt(scene, ramp, t, line.thickness * 0.5);
        cairo_line_to(cairo, line.x0 + t * dx + w * nx, line.y0 + t * dy + w * ny);
    };
    cairo_new_path(cairo);
    for (const double t : stations) point(t, 1.0);
    for (int i = 2 * kRampPoints; i > 0; --i) point(stations[i], -1.0);
    cairo_close_path(cairo);
}

}  // namespace

struct CairoLines::Surface {
    cairo_surface_t* image;
    cairo_t* cairo;
};

CairoLines::CairoLines(const Scene& lines) : scene(lines), surface(new Surface) {
    surface->image = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, scene.width, scene.height);
    surface->cairo = cairo_create(surface->image);
}

CairoLines::~CairoLines() {
    cairo_destroy(surface->cairo);
    cairo_surface_destroy(surface->image);
    delete surface;
}

void CairoLines::clear() {
    cairo_surface_flush(surface->image);
    std::memset(cairo_image_surface_get_data(surface->image), 0,
                static_cast<std::size_t>(cairo_image_surface_get_stride(surface->image)) *
                    static_cast<std::size_t>(scene.height));
    cairo_surface_mark_dirty(surface->image);
}

void CairoLines::draw(streakfall::StrokeShape ramp) {
    for (std::size_t i = 0; i < scene.lines.size(); ++i) {
        const LineColor c = colorOfLine(i);
        cairo_set_source_rgb(surface->cairo, c.red / 255.0, c.green / 255.0, c.blue / 255.0);
        outline(surface->cairo, scene, ramp, scene.lines[i]);
        cairo_fill(surface->cairo);
    }
    cairo_surface_flush(surface->image);
}

}  // namespace bench
