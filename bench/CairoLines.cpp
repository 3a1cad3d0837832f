#include "CairoLines.h"

#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace bench {
namespace {

using streakfall::LineRecord;
using streakfall::StrokeForm;

constexpr int kRampPoints = 16;  // outline points along each ramp

// One line in the form of its stroke.
class Outline {
  public:
    Outline(StrokeForm& strokeForm, const LineRecord& record) : form(strokeForm), line(record) {
        dx = line.x1 - line.x0;
        dy = line.y1 - line.y0;
        length = std::max(std::sqrt(dx * dx + dy * dy), 1e-9);
        if (!form.inOutEnabled) return;
        const double shrink = std::max(1.0, line.thickness / length);
        in = form.inLength / length * shrink;
        out = form.outLength / length * shrink;
    }

    void lay(cairo_t* cairo) const {
        std::array<double, 2 * kRampPoints + 2> stations;
        const std::size_t count = placeStations(stations);
        std::array<double, 2 * kRampPoints + 2> half;
        for (std::size_t i = 0; i < count; ++i) half[i] = halfWidthAt(stations[i]);
        const double nx = -dy / length, ny = dx / length;
        const auto point = [&](std::size_t i, double side) {
            const double t = stations[i], w = side * half[i];
            cairo_line_to(cairo, line.x0 + t * dx + w * nx, line.y0 + t * dy + w * ny);
        };
        cairo_new_path(cairo);
        for (std::size_t i = 0; i < count; ++i) point(i, 1.0);
        for (std::size_t i = count; i > 0; --i) point(i - 1, -1.0);
        cairo_close_path(cairo);
    }

  private:
    // Parts of the line from 0 to 1 where the outline has points; their number.
    std::size_t placeStations(std::array<double, 2 * kRampPoints + 2>& stations) const {
        std::size_t count = 0;
        const auto place = [&](double t) { stations[count++] = t; };
        if (in > 0.0) {
            for (int i = 0; i < kRampPoints; ++i) place(std::min(in, 1.0) * i / kRampPoints);
        }
        place(in > 0.0 ? std::min(in, 1.0) : 0.0);
        place(out > 0.0 ? 1.0 - std::min(out, 1.0) : 1.0);
        if (out > 0.0) {
            for (int i = kRampPoints; i > 0; --i) {
                place(1.0 - std::min(out, 1.0) * (i - 1) / kRampPoints);
            }
        }
        if (in + out > 1.0) std::sort(stations.begin(), stations.begin() + count);
        return count;
    }

    double halfWidthAt(double t) const {
        const double full = line.thickness * 0.5;
        const auto ramp = [&](double u, double thin) {
            form.inShape.cursor = 0;
            return u >= 1.0 ? full
                            : full * (thin + (1.0 - thin) * streakfall::shapeValue(
                                                                form.inShape, std::max(u, 0.0)));
        };
        double half = full;
        if (in > t) half = ramp(t / in, form.startThicknessRatio);
        if (out > 1.0 - t) half = std::min(half, ramp((1.0 - t) / out, form.endThicknessRatio));
        return half;
    }

    StrokeForm& form;
    const LineRecord& line;
    double dx, dy, length;
    double in = 0.0, out = 0.0;  // ramps as parts of the line
};

}  // namespace

struct CairoLines::Surface {
    cairo_surface_t* image;
    cairo_t* cairo;
};

CairoLines::CairoLines(int width, int height) : surface(new Surface) {
    surface->image = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
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
                    static_cast<std::size_t>(cairo_image_surface_get_height(surface->image)));
    cairo_surface_mark_dirty(surface->image);
}

void CairoLines::draw(StrokeForm& form, const std::vector<LineRecord>& lines,
                      const std::vector<CairoPen>& pens) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const CairoPen& pen = pens[i];
        cairo_set_source_rgba(surface->cairo, pen.red, pen.green, pen.blue, pen.alpha);
        Outline(form, lines[i]).lay(surface->cairo);
        cairo_fill(surface->cairo);
    }
    cairo_surface_flush(surface->image);
}

}  // namespace bench
