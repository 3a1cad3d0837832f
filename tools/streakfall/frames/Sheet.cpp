#include "Sheet.h"

#include <algorithm>
#include <cmath>

#include "FrameRenderer.h"
#include "Label.h"
#include "Reduction.h"

namespace tool {

namespace {

using standin::Image;

// In pixels.
constexpr int kGap = 16;
constexpr int kLetters = 15;
constexpr int kLine = 20;
constexpr double kPaper = 0.93;

struct Grid {
    int columns, rows, width, height, caption;  // the last three of a tile

    [[nodiscard]] int left(int column) const { return kGap + column * (width + kGap); }
    [[nodiscard]] int top(int row) const { return kGap + row * (height + caption + kGap); }
};

Grid layOut(const Image& tile, const std::vector<Tile>& tiles, int columns) {
    std::size_t lines = 0;
    for (const Tile& each : tiles) lines = std::max(lines, each.labels.size());
    Grid grid{columns, 0, tile.width(), tile.height(), kLine * static_cast<int>(lines)};
    const int count = static_cast<int>(tiles.size());
    if (columns <= 0) {
        const double shape = static_cast<double>(grid.height + grid.caption) / grid.width;
        grid.columns =
            std::clamp(static_cast<int>(std::lround(std::sqrt(count * shape))), 1, count);
    }
    grid.rows = (count + grid.columns - 1) / grid.columns;
    return grid;
}

// Over white, so that a tile without a background stands out from the sheet's paper.
void layOver(Image& sheet, const Image& tile, int left, int top) {
    constexpr int kWhite = 255;
    for (int y = 0; y < tile.height(); ++y) {
        const PF_Pixel* from = tile.row<PF_Pixel>(y);
        PF_Pixel* to = sheet.row<PF_Pixel>(top + y) + left;
        for (const PF_Pixel* end = from + tile.width(); from < end; ++from, ++to) {
            const auto onWhite = [&](A_u_char channel) {
                const int light = channel * from->alpha + kWhite * (kWhite - from->alpha);
                return static_cast<A_u_char>((light + kWhite / 2) / kWhite);
            };
            *to = {kWhite, onWhite(from->red), onWhite(from->green), onWhite(from->blue)};
        }
    }
}

}  // namespace

Image makeSheet(EffectSession& session, const Image& input, const std::vector<Tile>& tiles,
                const SheetForm& form) {
    // Drawn at full size and reduced, so that a tile shows what the frame will look like.
    const int divisor = std::max(
        1, static_cast<int>(std::lround(static_cast<double>(input.width()) / form.tileWidth)));
    const Grid grid = layOut(reduced(input, divisor), tiles, form.columns);
    Image sheet = Image::filled(grid.left(grid.columns), grid.top(grid.rows), standin::Depth::bits8,
                                1, kPaper, kPaper, kPaper);
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        const int left = grid.left(static_cast<int>(i) % grid.columns);
        const int top = grid.top(static_cast<int>(i) / grid.columns);
        const ParamArguments arguments = session.readArguments(tiles[i].params);
        FrameRenderer renderer(session, arguments, {});
        FrameTask task;
        task.frame = form.frame;
        task.layer = {input.width(), input.height()};
        task.input = input;
        layOver(sheet, reduced(renderer.draw(std::move(task)).picture, divisor), left, top);
        int baseline = top + grid.height + kLine - 4;
        for (const std::string& label : tiles[i].labels) {
            drawLabel(sheet, left, left + grid.width, baseline, kLetters, label);
            baseline += kLine;
        }
    }
    return sheet;
}

}  // namespace tool
