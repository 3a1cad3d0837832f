// The random make-up of a row half. The draws come in exactly this order; those whose value is
// not used are made all the same, for a skipped draw would change every number behind it.
#include <algorithm>
#include <cmath>

#include "lines/Convert.h"
#include "lines/LineField.h"
#include "lines/RandomSequence.h"

namespace streakfall {

double reflectFold(double v, double limit) {
    const std::int32_t q = truncToI32(v / limit);
    const double r = std::fabs(std::fmod(v, limit));
    // Odd also below zero, so that the fold is continuous across every multiple of the limit.
    return (q & 1) != 0 ? limit - r : r;
}

bool LineField::grouped() const {
    return truncToI32((groupLines + linesRandom) * density + 0.5) >= 2;
}

double LineField::buildPrototypes(double lineLength, double step, std::int32_t count) {
    prototypeCount = count;
    return grouped() ? buildGroups(lineLength, step, count) : buildPlain(lineLength, step, count);
}

double LineField::buildPlain(double lineLength, double step, std::int32_t count) {
    std::int32_t id = step >= 0.0 ? 0 : 1;
    for (std::int32_t i = 0; i < count; ++i) {
        LinePrototype& q = prototypes[static_cast<std::size_t>(i)];
        q.groupId = id++;
        q.thickness = (1.0 - thicknessRandom * drawUnit(state)) * thickness;
        q.baseLength = lineLength;
        q.lengthFactor = (lengthRandom * lineLength * drawSigned(state) + lineLength) / lineLength;
        q.axialOffset = offsetRandom * lineLength * drawSigned(state);
        q.lateralOffset = densityRandom * step * drawSigned(state);
        if (length < 0.0) q.axialOffset = q.axialOffset - q.baseLength;
    }
    return 0.0;
}

double LineField::buildGroups(double lineLength, double step, std::int32_t count) {
    std::int32_t id = step >= 0.0 ? 0 : 1;
    std::int32_t placed = 0;
    double carry = groupCarry;
    double half = 0.0;
    // Without any lines to place, empty groups would follow each other for ever.
    std::int32_t emptyInARow = 0;
    while (placed < count && emptyInARow <= count) {
        const double sizeDraw = drawSigned(state);
        const std::int32_t wanted =
            truncToI32((sizeDraw * linesRandom + groupLines) * density + 0.5);
        const std::int32_t size = std::min(std::abs(std::max(wanted, -INT32_MAX)), count);
        emptyInARow = size == 0 ? emptyInARow + 1 : 0;
        if (size > count - placed) break;  // the last group is not cut to fit
        const double middle = 0.5 * (size - 1);
        if (placed == 0) half = step * middle;
        drawUnit(state);
        const double pull = std::clamp(attraction, 0.0, 1.0);

        // The room of a group is what the group before left over plus what its own lines free.
        const double span = size - (1.0 - pull) * size;
        const double room = carry + span;
        double groupShift = 0.0;
        if (room > 0.0) {
            const double s = drawSigned(state);
            const double mid = span * 0.5 + carry;
            const double v = 2.0 * room * s * intervalRandom + mid;
            const double e = reflectFold(v, room) - mid;
            groupShift = step * e;
            carry = (room - mid) - e;
            if (placed == 0) groupCarry = mid + e;
        } else {
            drawUnit(state);
        }
        const double groupAxial = drawSigned(state) * lineLength * groupOffsetRandom;

        for (std::int32_t i = 0; i < size; ++i) {
            LinePrototype& q = prototypes[static_cast<std::size_t>(placed + i)];
            double j = i;
            if (size > 1) {
                const double v = i + drawSigned(state) * 2.0 * densityRandom;
                j = reflectFold(v, size - 1);
            }
            const double lateral = ((j - i) + (middle - j) * pull) * step;
            q.groupId = id;
            // In a group a thickness only grows; outside of one it only shrinks.
            q.thickness = (drawUnit(state) * thicknessRandom + 1.0) * thickness;
            q.baseLength = lineLength;
            q.lengthFactor =
                (drawSigned(state) * lineLength * lengthRandom + lineLength) / lineLength;
            q.axialOffset = drawSigned(state) * lineLength * offsetRandom + groupAxial;
            q.lateralOffset = lateral + groupShift;
            if (length < 0.0) q.axialOffset = q.axialOffset - q.baseLength;
        }
        ++id;
        placed += size;
    }
    prototypeCount = placed;
    return half;
}

}  // namespace streakfall
