// LineField: turns one frame's values into the flat list of lines to draw.
//
// The field has a coordinate system of its own: origin at the start point, x axis toward the end
// point. Lines lie along the axis in rows; a row is a stack of slots that spreads from the axis
// to both sides, by distance or, as a fan, by angle. Every slot takes its random make-up from a
// LinePrototype.
//
// Owner: the frame flow, one a render, as a local. Nothing is shared, nothing outlives the render.
#pragma once

#include <cstdint>
#include <vector>

#include "lines/LinePrototype.h"
#include "lines/LineRecord.h"
#include "lines/RowPattern.h"

namespace streakfall {

struct Rect {
    double left, top, right, bottom;  // closed on all sides where a point is tested
};

class LineField {
  public:
    // Values of `bandMode`.
    static constexpr std::int32_t kArch = 1;
    static constexpr std::int32_t kFixedBand = 2;

    // Bounds of one frame; what lies behind a bound is left out, from the far end of the axis. The
    // second and third cannot be met by values inside the parameters' ranges in a frame of at most
    // kMaxSide a side, and the first only where more than that many lines touch the frame.
    //
    // Patterns are prepared once each: at most 100 of "Random Repeat Num", one more, and the first
    // row's own. A half of one draws at most ceil(diagonal) prototypes and has at most four times
    // as many slots, so 102 x 2 x 5 x 42,427 = 43 million.
    //
    // A step is a row met or a slot open there. Rows without open slots in any pattern are passed
    // over without a step. So a row is met in vain only while another pattern has slots open: with
    // one line in 101 rows there are 102 steps a line, and 102 x 2^25 = 3.4 thousand million. Any
    // more slots open make more lines in proportion, but for the few that pass within
    // a thousandth of a pixel of the frame, or whose fan is so narrow that its apex lies where
    // doubles are far apart.
    static constexpr std::size_t kMaxLines = std::size_t{1} << 25;  // 1.75 GiB of records
    static constexpr std::int64_t kMaxPreparedSlots = std::int64_t{1} << 26;
    static constexpr std::int64_t kMaxSteps = std::int64_t{1} << 32;

    // margin: how far a line may lie outside the frame and still reach it, pixels.
    // scale: render scale, 1 at full size.
    LineField(double left, double top, double right, double bottom, double margin, double scale);

    // Appends the frame's lines: row by row from the lowest axial place up, in a row the first
    // half's slots, then the second half's, each going away from the axis. Degenerate values
    // give fewer lines or none. Throws only what a vector throws when it cannot grow.
    void generate(std::vector<LineRecord>& lines);

    // Draws the prototypes of one row half from `state`. lineLength above 0; step is the lateral
    // step, with sign. Returns how far the first slot of the row lies before the axis.
    double buildPrototypes(double lineLength, double step, std::int32_t count);

    // Seeds `state` for one half (+1 or -1) of a row and returns the half's seed word.
    std::int32_t rowSeedWord(std::int32_t patternIndex, std::int32_t halfSign);

    // Values of the frame, set by the owner. Lengths in pixels at the render scale, ratios as
    // parts of one unless told otherwise.
    double startX = 0, startY = 0;  // buffer coordinates
    double endX = 0, endY = 0;
    double length = 0;  // with sign
    double lengthRandom = 0;
    double offset = 0;
    double offsetRandom = 0;
    double thickness = 0;
    double thicknessRandom = 0;
    double density = 0;        // lines on 1000 pixels of full size
    double densityRandom = 0;  // four times the ratio
    bool repeat = false;
    std::int32_t repeatRandomCount = 0;  // patterns less one
    double repeatInterval = 0;
    std::int32_t randomSeed = 0;
    double groupLines = 0;
    double linesRandom = 0;
    double attraction = 0;
    double groupOffsetRandom = 0;
    double intervalRandom = 0;
    bool taperEnabled = false;
    double taper = 0;
    double baseLength = 0;
    double archRate = 1;
    std::int32_t bandMode = kArch;

    std::vector<LinePrototype> prototypes;
    std::int32_t prototypeCount = 0;  // how many are in use
    double groupCarry = 0;            // room left by the first group of a row's first half

    Rect frameRect;
    Rect clipRect;    // frameRect grown by the margin
    double diagonal;  // of frameRect
    double reach;     // farthest axial place, from the start point, that can touch the frame
    double scale;
    double autoOffsetTotal = 0;      // frame index x "Auto Offset"
    std::uint32_t intervalWord = 0;  // which random field of the "Random Interval" cycle
    std::uint32_t state;             // prototype stream
    std::uint32_t intervalState;     // interval stream

  private:
    struct Rows {
        double pitch;
        double x;              // axial place of the first row
        std::int64_t pattern;  // of the first row, not reduced
        std::int64_t count;
    };
    struct Slots {
        double lineLength;        // above 0
        double step;              // lateral, pixels or radians, with sign
        double apex;              // axial place of the fan's apex; 0 without a fan
        double sine, cosine;      // of the field's axis in the buffer
        std::int32_t prototypes;  // to draw for a row half
        std::int32_t count;       // of slots, a row half
    };
    struct Path;

    std::int64_t patternCount() const;
    bool layRows(double lineLength, Rows& rows);
    Slots laySlots(double lineLength) const;
    double farthestCorner() const;
    bool grouped() const;
    void leaveOutFarSlots(Slots& slots) const;
    double buildPlain(double lineLength, double step, std::int32_t count);
    double buildGroups(double lineLength, double step, std::int32_t count);
    std::vector<RowPattern> layPatterns(const Rows& rows, const Slots& slots);
    RowPattern layPattern(std::int64_t pattern, const Slots& slots);
    void addHalf(RowPattern& pattern, const Slots& slots, double y, double step,
                 std::int32_t seedWord) const;
    Path straightPath(const RowSlot& slot, const Slots& slots) const;
    Path fanPath(const RowSlot& slot, const Slots& slots) const;
    bool findRange(RowSlot& slot, const Slots& slots) const;
    bool place(const RowSlot& slot, const Slots& slots, double x, LineRecord& line) const;
};

// The triangle wave that folds v into 0 to limit; limit above 0.
double reflectFold(double v, double limit);

// Steps the field's interval stream and sets `intervalWord`. randomArray 0 stands for 512.
void intervalWordFor(LineField& field, std::int32_t frameIndex, std::int32_t randomInterval,
                     std::int32_t randomArray);

// True when either point lies in the closed rectangle or the segment crosses one of its edges.
bool segmentTouchesRect(double px, double py, double qx, double qy, const Rect& rect);

}  // namespace streakfall
