#include "Backdrops.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "Failure.h"
#include "PictureReader.h"
#include "Reduction.h"

namespace tool::panel {

namespace {

using standin::Depth;
using standin::Image;

// Some thirty frames of 1920 x 1080.
constexpr std::size_t kMostBytes = 256u << 20;

constexpr int kSquare = 16;  // pixels
constexpr double kDark = 0.4, kLight = 0.6;

Image checker(standin::LayerSize size) {
    Image image = Image::filled(size.width, size.height, Depth::bits8, 1, kDark, kDark, kDark);
    const auto light = static_cast<A_u_char>(kLight * 255);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            if ((x / kSquare + y / kSquare) % 2 == 0)
                image.row<PF_Pixel>(y)[x] = {255, light, light, light};
    return image;
}

}  // namespace

std::shared_ptr<const BackdropPicture> Backdrops::picture(Backdrop which, int frame, int divisor) {
    const std::string key = keyOf(which, frame);
    const std::string scaledKey = fmt::format("{} 1/{}", key, divisor);
    if (auto found = find(scaledKey)) return found;
    const std::lock_guard lock(reading_);
    if (auto found = find(scaledKey)) return found;
    const std::string fullKey = key + " 1/1";
    auto full = find(fullKey);
    if (!full) {
        full = std::make_shared<const BackdropPicture>(make(which, frame));
        keep(fullKey, full);
    }
    if (divisor == 1) return full;
    const auto scaled = std::make_shared<const BackdropPicture>(
        BackdropPicture{full->layer, reduced(full->image, divisor)});
    keep(scaledKey, scaled);
    return scaled;
}

std::shared_ptr<const BackdropPicture> Backdrops::find(const std::string& key) {
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(kept_.begin(), kept_.end(),
                                    [&](const Entry& entry) { return entry.key == key; });
    if (found == kept_.end()) return nullptr;
    kept_.splice(kept_.begin(), kept_, found);
    return kept_.front().picture;
}

void Backdrops::keep(const std::string& key,
                     const std::shared_ptr<const BackdropPicture>& picture) {
    const std::lock_guard lock(mutex_);
    kept_.push_front({key, picture});
    bytes_ += picture->image.size();
    while (bytes_ > kMostBytes && kept_.size() > 1) {
        bytes_ -= kept_.back().picture->image.size();
        kept_.pop_back();
    }
}

// With a file's time and size: one that was written anew is another picture.
std::string Backdrops::keyOf(Backdrop which, int frame) const {
    if (which == Backdrop::kChecker) return "checker";
    if (which == Backdrop::kBlack || !input_) return "black";
    const std::string path = input_->fileFor(frame);
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) fail(Exit::kInput, "{}: {}", path, std::strerror(errno));
    return fmt::format("{} {}.{} {}", path, status.st_mtim.tv_sec, status.st_mtim.tv_nsec,
                       status.st_size);
}

BackdropPicture Backdrops::make(Backdrop which, int frame) const {
    if (which == Backdrop::kChecker) return {layer_, checker(layer_)};
    if (which == Backdrop::kBlack || !input_)
        return {layer_, Image::opaqueBlack(layer_.width, layer_.height, Depth::bits8)};
    Picture read = readPictureFile(input_->fileFor(frame), Depth::bits8, {imageLayer_, {}});
    return {{read.image.width(), read.image.height()}, std::move(read.image)};
}

}  // namespace tool::panel
