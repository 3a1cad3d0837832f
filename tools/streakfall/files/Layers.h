// Where a picture's channels stand in a file that may hold several parts with several layers.
#pragma once

#include <OpenImageIO/imageio.h>

#include <string>

namespace tool {

struct ChannelPlaces {
    int part = 0;
    int red = 0, green = 0, blue = 0;  // all the same for grey
    int alpha = -1;                    // none
    std::string dropped;               // what the file holds beside, in words

    [[nodiscard]] int first() const;
    [[nodiscard]] int behindLast() const;
};

// The layer of this name; when it is empty, the picture's own red, green and blue (or grey), else
// those of the first part that has such. Leaves the file at the chosen part. Throws Failure (input)
// that lists the layers.
[[nodiscard]] ChannelPlaces chooseChannels(OIIO::ImageInput& file, const std::string& path,
                                           const std::string& layer);

}  // namespace tool
