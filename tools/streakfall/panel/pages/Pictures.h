// Draws the frames that pages ask for, and makes them into answers: a head in JSON, then raw
// pixels.
#pragma once

#include "Page.h"

namespace tool::panel {

struct PictureRequest {
    int frame = 0;
    int divisor = 1;  // of the layer's sides
    Backdrop backdrop = Backdrop::kInput;
    bool thumbnail = false;      // the slot
    std::optional<double> turn;  // see DrawQueue::enter
    Json state;                  // for the head; null: none
};

// The frame under these values. Throws Refusal when a newer request came, with the state, and
// Failure.
[[nodiscard]] Answer drawPicture(Studio& studio, Page& page, const Values& values,
                                 const PictureRequest& request);

// What the effect would get as its layer.
[[nodiscard]] Answer barePicture(Studio& studio, const PictureRequest& request);

}  // namespace tool::panel
