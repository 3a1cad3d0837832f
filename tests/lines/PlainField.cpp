#include "PlainField.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "lines/Trigonometry.h"

namespace plain {
namespace {

using streakfall::LineField;
using streakfall::LinePrototype;
using streakfall::LineRecord;
using streakfall::Rect;
using streakfall::sineCosine;
using streakfall::vectorAngle;

class Stream {
  public:
    explicit Stream(std::uint32_t word) : state(word) {
        step();
        step();
    }
    double unit() {
        step();
        return (state >> 16) * 1.5259021896696422e-05;
    }
    double both() {
        const double u = unit();
        return (u - 1.0) + u;
    }

  private:
    void step() { state = 214013u * state + 2531011u; }
    std::uint32_t state;
};

double fold(double v, double limit) {
    const auto q = static_cast<std::int64_t>(v / limit);
    const double r = std::fabs(std::fmod(v, limit));
    return q % 2 != 0 ? limit - r : r;
}

bool inside(double x, double y, const Rect& c) {
    return x >= c.left && x <= c.right && y >= c.top && y <= c.bottom;
}

bool crosses(const LineRecord& l, double ax, double ay, double bx, double by) {
    const double dx = l.x1 - l.x0, dy = l.y1 - l.y0, ex = bx - ax, ey = by - ay;
    const double det = dx * ey - dy * ex;
    if (det == 0.0) return false;
    const double s = ((ax - l.x0) * ey - (ay - l.y0) * ex) / det;
    const double u = ((ax - l.x0) * dy - (ay - l.y0) * dx) / det;
    return s >= 0.0 && s <= 1.0 && u >= 0.0 && u <= 1.0;
}

bool touches(const LineRecord& l, const Rect& c) {
    return inside(l.x0, l.y0, c) || inside(l.x1, l.y1, c) ||
           crosses(l, c.left, c.top, c.right, c.top) ||
           crosses(l, c.left, c.bottom, c.right, c.bottom) ||
           crosses(l, c.left, c.top, c.left, c.bottom) ||
           crosses(l, c.right, c.top, c.right, c.bottom);
}

// One row half after the other, each from a stream of its own.
class Rows {
  public:
    explicit Rows(const LineField& field) : f(field), density(std::max(0.1, field.density)) {}

    std::vector<LineRecord> run();

  private:
    double build(std::uint32_t word, double step);
    void buildGroups(Stream& stream, double step, double& half);
    void slots(double x, double y, double step, std::uint32_t word);
    bool fan(const LinePrototype& q, double px, double py, LineRecord& line) const;
    double farthest() const;
    std::uint32_t word(std::int64_t k, int half) const {
        return static_cast<std::uint32_t>(f.randomSeed * 79 + f.intervalWord * 3 + k * 17 + half);
    }

    const LineField& f;
    double density;
    double L = 0, delta = 0, apex = 0, carryOfRow = 0, sine = 0, cosine = 1;
    int N = 0, T = 0;
    std::vector<LinePrototype> prototypes;
    std::vector<LineRecord> out;
};

double Rows::farthest() const {
    double m = f.diagonal;
    for (const double x : {f.frameRect.left, f.frameRect.right}) {
        for (const double y : {f.frameRect.top, f.frameRect.bottom}) {
            const double dx = f.startX - x, dy = f.startY - y;
            m = std::max(m, std::sqrt(dx * dx + dy * dy));
        }
    }
    return m;
}

std::vector<LineRecord> Rows::run() {
    L = std::fabs(f.length);
    if (L < 1e-06) return {};
    N = std::max(900, static_cast<int>(std::ceil(f.diagonal)));
    const double R = farthest() + L + L * (0.5 * f.lengthRandom + f.offsetRandom);
    double off = f.autoOffsetTotal + f.offset, P = 10.0 * R;
    std::int64_t c = 0, k = 0;
    const std::int64_t n = f.repeat ? f.repeatRandomCount : 0;
    if (!f.repeat) {
        if (std::fabs(off) > R) return {};
    } else {
        P = f.repeatInterval + L;
        const double E = (n + 1) * P;
        if (off > R) {
            off = off - E * std::trunc(off / E + 0.5);
        } else if (off < -R) {
            off = off + (n + 1) * P;
        }
        c = static_cast<std::int64_t>(std::ceil((R + off) / P));
        k = n - (c % (n + 1)) + 1;
    }
    delta = 1000.0 / density * f.scale;
    T = N;
    if (f.taperEnabled) {
        const double w = delta * f.taper;
        const double v = f.taper > 0.0 ? delta - w : delta + w;
        apex = ((0.0 - f.baseLength) * v) / w;
        delta = vectorAngle(w, f.baseLength);
        T = std::fabs(delta) < 0.001 * 0.017453292519943295 ? 4 * N : 4000;
    }
    const auto axis = sineCosine(vectorAngle(f.endY - f.startY, f.endX - f.startX));
    sine = axis.sine;
    cosine = axis.cosine;
    double x = off - c * P;
    const auto m = static_cast<std::int64_t>((R - x) / P) + 1;
    for (std::int64_t j = 0; j < m; ++j) {
        carryOfRow = 0.0;
        const double half = build(word(k, +1), delta);
        slots(x, 0.0 - half, delta, word(k, +1));
        build(word(k, -1), -delta);
        slots(x, 0.0 - (half + delta), -delta, word(k, -1));
        k = (k + 1) % (n + 1);
        x = x + P;
    }
    return std::move(out);
}

double Rows::build(std::uint32_t word, double step) {
    Stream stream(word);
    double half = 0.0;
    prototypes.clear();
    if (static_cast<int>((f.groupLines + f.linesRandom) * density + 0.5) >= 2) {
        buildGroups(stream, step, half);
        return half;
    }
    for (int i = 0; i < N; ++i) {
        LinePrototype q{};
        q.groupId = i + (step >= 0.0 ? 0 : 1);
        q.thickness = (1.0 - f.thicknessRandom * stream.unit()) * f.thickness;
        q.baseLength = L;
        q.lengthFactor = (f.lengthRandom * L * stream.both() + L) / L;
        q.axialOffset = f.offsetRandom * L * stream.both();
        q.lateralOffset = f.densityRandom * step * stream.both();
        if (f.length < 0.0) q.axialOffset = q.axialOffset - q.baseLength;
        prototypes.push_back(q);
    }
    return half;
}

void Rows::buildGroups(Stream& stream, double step, double& half) {
    int placed = 0, id = step >= 0.0 ? 0 : 1;
    double carry = carryOfRow;
    for (; placed < N; ++id) {
        const double number = (stream.both() * f.linesRandom + f.groupLines) * density + 0.5;
        const int n = std::min(std::abs(static_cast<int>(number)), N);
        if (n > N - placed) return;
        const double h = 0.5 * (n - 1);
        if (placed == 0) half = step * h;
        stream.unit();
        const double A = std::clamp(f.attraction, 0.0, 1.0);
        const double span = n - (1.0 - A) * n, W = carry + span;
        double shift = 0.0;
        if (W > 0.0) {
            const double s = stream.both(), mid = span * 0.5 + carry;
            const double e = fold(2.0 * W * s * f.intervalRandom + mid, W) - mid;
            shift = step * e;
            carry = (W - mid) - e;
            if (placed == 0) carryOfRow = mid + e;
        } else {
            stream.unit();
        }
        const double axial = stream.both() * L * f.groupOffsetRandom;
        for (int i = 0; i < n; ++i) {
            LinePrototype q{};
            const double j = n > 1 ? fold(i + stream.both() * 2.0 * f.densityRandom, n - 1) : i;
            const double lateral = ((j - i) + (h - j) * A) * step;
            q.groupId = id;
            q.thickness = (stream.unit() * f.thicknessRandom + 1.0) * f.thickness;
            q.baseLength = L;
            q.lengthFactor = (stream.both() * L * f.lengthRandom + L) / L;
            q.axialOffset = stream.both() * L * f.offsetRandom + axial;
            q.lateralOffset = lateral + shift;
            if (f.length < 0.0) q.axialOffset = q.axialOffset - q.baseLength;
            prototypes.push_back(q);
        }
        placed += n;
    }
}

bool Rows::fan(const LinePrototype& q, double px, double py, LineRecord& line) const {
    const double a = f.archRate, phi = q.lateralOffset + py;
    const bool arch = f.bandMode == 1;
    if (std::fabs(phi) > (arch ? 1.5882496193148399 : 1.53588974175501)) return false;
    const auto [sin, cos] = sineCosine(phi);
    double s, r;
    if (arch) {
        s = q.lengthFactor * q.baseLength;
        r = q.axialOffset + px - (s - q.baseLength) * 0.5;
    } else {
        const double e = q.axialOffset + q.baseLength + px - apex, g0 = e / cos;
        const double g = (q.baseLength / e) * g0;
        s = q.lengthFactor * g;
        r = (g0 + apex) - g - (s - g) * 0.5;
    }
    double r0 = r - apex * std::sqrt(a * a / (cos * cos + a * a * (sin * sin)));
    double r1 = r0 + s;
    line.thickness = q.thickness;
    if (f.taper >= 0.0) {
        if (r1 < 0.0) line.thickness = 0.0;
        r0 = std::max(0.0, r0);
    } else {
        if (r0 > 0.0) line.thickness = 0.0;
        r1 = std::min(0.0, r1);
    }
    line.x0 = a * apex + r0 * cos;
    line.y0 = r0 * sin;
    line.x1 = a * apex + r1 * cos;
    line.y1 = r1 * sin;
    line.axialPosition = a * apex + r0;
    return true;
}

void Rows::slots(double x, double y, double step, std::uint32_t word) {
    if (prototypes.empty()) return;
    int failures = 0;
    for (int i = 0; i < T; ++i, y = y + step) {
        const LinePrototype& q = prototypes[static_cast<std::size_t>(i) % prototypes.size()];
        LineRecord line{};
        if (!f.taperEnabled) {
            const double s = q.lengthFactor * q.baseLength;
            line.x0 = line.axialPosition = q.axialOffset + x - (s - q.baseLength) * 0.5;
            line.y0 = line.y1 = q.lateralOffset + y;
            line.x1 = s + line.x0;
            line.thickness = q.thickness;
        } else if (!fan(q, x, y, line)) {
            if (++failures > 4 && q.groupId > 0) return;
            continue;
        }
        failures = 0;
        if (!(line.thickness > 0.0)) continue;
        const double x0 = line.x0, x1 = line.x1;
        line.x0 = f.startX + x0 * cosine - line.y0 * sine;
        line.y0 = f.startY + x0 * sine + line.y0 * cosine;
        line.x1 = f.startX + x1 * cosine - line.y1 * sine;
        line.y1 = f.startY + x1 * sine + line.y1 * cosine;
        line.seed = static_cast<std::int32_t>(word + static_cast<std::uint32_t>(i));
        if (touches(line, f.clipRect)) out.push_back(line);
    }
}

}  // namespace

std::vector<LineRecord> lines(const LineField& field) { return Rows(field).run(); }

}  // namespace plain
