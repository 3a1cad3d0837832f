// The pictures that the effect may get as its layer, in 8 bits, at full size or reduced: frames of
// the input, opaque black, and a checkerboard. What was read stays, up to a bound, until its file
// changes. Safe from any thread.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <string>

#include "FilePattern.h"
#include "host/Image.h"
#include "host/Instance.h"

namespace tool::panel {

enum class Backdrop { kInput, kChecker, kBlack };

struct BackdropPicture {
    standin::LayerSize layer{0, 0};  // at full size
    standin::Image image;
};

class Backdrops {
  public:
    // `input` none: opaque black stands for it. `imageLayer`: of an EXR. `layer`: the size of what
    // no file gives.
    Backdrops(std::optional<FilePattern> input, std::string imageLayer, standin::LayerSize layer)
        : input_(std::move(input)), imageLayer_(std::move(imageLayer)), layer_(layer) {}

    // At 1/divisor of the size. Throws Failure (input).
    [[nodiscard]] std::shared_ptr<const BackdropPicture> picture(Backdrop which, int frame,
                                                                 int divisor);

  private:
    struct Entry {
        std::string key;
        std::shared_ptr<const BackdropPicture> picture;
    };
    std::shared_ptr<const BackdropPicture> find(const std::string& key);
    void keep(const std::string& key, const std::shared_ptr<const BackdropPicture>& picture);
    [[nodiscard]] std::string keyOf(Backdrop which, int frame) const;
    [[nodiscard]] BackdropPicture make(Backdrop which, int frame) const;

    std::optional<FilePattern> input_;
    std::string imageLayer_;
    standin::LayerSize layer_;
    std::mutex reading_;     // one at a time, so that two who want the same frame read it once
    std::mutex mutex_;       // of what follows
    std::list<Entry> kept_;  // the one used last in front
    std::size_t bytes_ = 0;
};

}  // namespace tool::panel
