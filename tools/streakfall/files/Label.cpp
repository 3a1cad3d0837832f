#include "Label.h"

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>

#include <algorithm>

#include "Failure.h"

namespace tool {

namespace {

constexpr char kFont[] = "DejaVuSans";

int widthOf(const std::string& text, int height) {
    const OIIO::ROI size = OIIO::ImageBufAlgo::text_size(text, height, kFont);
    if (!size.defined())
        fail(Exit::kOutput, "no font for labels; install DejaVu Sans (fonts-dejavu-core)");
    return size.xend;
}

std::string shortened(const std::string& text, int height, int room) {
    if (widthOf(text, height) <= room) return text;
    std::string kept = text;
    while (!kept.empty() && widthOf(kept + "...", height) > room) kept.pop_back();
    return kept + "...";
}

}  // namespace

void drawLabel(standin::Image& picture, int left, int right, int baseline, int height,
               const std::string& text) {
    constexpr float kInk[] = {1.0f};
    const std::string shown = shortened(text, height, right - left);
    OIIO::ImageBuf letters(OIIO::ImageSpec(right - left, 2 * height, 1, OIIO::TypeDesc::FLOAT));
    OIIO::ImageBufAlgo::zero(letters);
    OIIO::ImageBufAlgo::render_text(letters, 0, height, shown, height, kFont, kInk);
    for (int y = 0; y < 2 * height; ++y) {
        const int row = baseline - height + y;
        if (row < 0 || row >= picture.height()) continue;
        for (int x = left; x < std::min(right, picture.width()); ++x) {
            const float ink = letters.getchannel(x - left, y, 0, 0);
            PF_Pixel& pixel = picture.row<PF_Pixel>(row)[x];
            for (A_u_char* channel : {&pixel.red, &pixel.green, &pixel.blue})
                *channel = static_cast<A_u_char>(*channel * (1 - ink) + 0.5f);
        }
    }
}

}  // namespace tool
