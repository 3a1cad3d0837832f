#include "validate/Frames.h"

#include <cstring>

namespace validate {

using namespace standin;

std::string name(const Way& way) {
    return text(bitDepth(way.depth), " bits ", way.road == Road::smart ? "smart" : "legacy");
}

FrameRequest frameOf(const Way& way, int width, int height) {
    FrameRequest request;
    request.road = way.road;
    request.input = Image(width, height, way.depth);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double alpha = x < width / 4 ? 0.0 : x < width / 2 ? 0.5 : 1.0;
            request.input.set(x, y, {alpha, (x * 7 % 11) / 11.0, (y * 5 % 13) / 13.0, 0.25});
        }
    }
    return request;
}

void storeBusyValues(Play& play, Dabs dabs) {
    struct Named {
        const char* name;
        double value;
    };
    static constexpr Named kValues[] = {
        {"Length", 50},
        {"Length Random", 30},
        {"Density of Lines", 150},
        {"Density Random", 20},
        {"Offset Random", 40},
        {"H", 60},
        {"S", 40},
        {"Use Start/End Opacity", 1},
        {"Start Opacity", 30},
        {"End Opacity", 100},  // dabs of one opacity, which are painted together
        {"Opacity Center Position", 30},
        {"Repeat", 1},
        {"Repeat Interval", 10},
        {"Enable Wave", 1},
        {"Wave Amount", 5},
        {"Wave Length", 15},
        {"Wave Amount Random", 50},
        {"Random Interval", 1},
        {"Auto Offset", 3},
        {"Thickness Random", 50},
    };
    play.instance().storeDefaults();
    for (const Named& named : kValues) play.set(named.name, named.value);
    play.set("Thickness", dabs == Dabs::small ? 4 : 24);
    if (const ParamInfo* const color = play.host().param(std::string("Color"))) {
        play.instance().storeValue(color->id, Value::color(200, 90, 20));
    }
}

Image backgroundOf(Play& play, const FrameRequest& request) {
    const ParamInfo* const clear = play.host().param(std::string("Clear Background"));
    const Time time{request.currentTime, request.timeScale};
    if (clear && play.instance().value(clear->id, time).part[0] != 0) {
        return Image(request.input.width(), request.input.height(), request.input.depth());
    }
    return request.input;
}

std::string difference(const Image& is, const Image& wanted) {
    if (is.width() != wanted.width() || is.height() != wanted.height()) {
        return text("a picture of ", is.width(), " x ", is.height(), " in place of ",
                    wanted.width(), " x ", wanted.height());
    }
    const int pixelBytes = bytesPerPixel(wanted.depth());
    long count = 0;
    std::string first;
    for (int y = 0; y < wanted.height(); ++y) {
        for (int x = 0; x < wanted.width(); ++x) {
            const auto offset = static_cast<std::size_t>(x) * static_cast<std::size_t>(pixelBytes);
            if (std::memcmp(is.row<std::byte>(y) + offset, wanted.row<std::byte>(y) + offset,
                            static_cast<std::size_t>(pixelBytes)) == 0) {
                continue;
            }
            if (count++ > 0) continue;
            const auto a = is.get(x, y), b = wanted.get(x, y);
            first = text("first at ", x, ", ", y, ": alpha ", a[0], " for ", b[0], ", red ", a[1],
                         " for ", b[1]);
        }
    }
    return count == 0 ? std::string() : text(count, " pixels differ, ", first);
}

}  // namespace validate
