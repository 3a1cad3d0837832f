#include "PictureReader.h"

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>
#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <filesystem>
#include <memory>

#include "Channel.h"
#include "Failure.h"
#include "Layers.h"
#include "Metadata.h"
#include "PngCheck.h"
#include "Text.h"

#ifdef __SANITIZE_THREAD__
// The picture library's own threads hand over their work out of the sanitizer's sight, since the
// library is built without it.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions() {
    return "race:libOpenImageIO\n";
}
#endif

namespace tool {

namespace {

using standin::Depth;
using standin::Image;

constexpr char kStraight[] = "oiio:UnassociatedAlpha";

// A library's words, which may go on for several lines.
std::string firstLine(const std::string& text) {
    return std::string(trimmed(split(trimmed(text), '\n')[0]));
}

// Reading.

OIIO::TypeDesc readType(const OIIO::ImageSpec& spec) {
    if (spec.format == OIIO::TypeDesc::UINT8) return OIIO::TypeDesc::UINT8;
    if (spec.format == OIIO::TypeDesc::UINT16) return OIIO::TypeDesc::UINT16;
    return OIIO::TypeDesc::FLOAT;
}

Depth naturalDepth(OIIO::TypeDesc type) {
    if (type == OIIO::TypeDesc::UINT8) return Depth::bits8;
    return type == OIIO::TypeDesc::UINT16 ? Depth::bits16 : Depth::float32;
}

// An open file, at the part whose channels were chosen.
struct OpenPicture {
    std::string path;
    std::unique_ptr<OIIO::ImageInput> file;
    ChannelPlaces at;
    OIIO::ImageSpec spec;  // of that part, at full size
    bool associated = false;
};

// Before anything opens it: a pipe would be waited for.
void checkFile(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) fail(Exit::kInput, "cannot read {}: no such file", path);
    if (std::filesystem::is_directory(status))
        fail(Exit::kInput, "cannot read {}: it is a folder", path);
    if (!std::filesystem::is_regular_file(status))
        fail(Exit::kInput, "cannot read {}: it is not a plain file", path);
    if (const std::string trouble = pngTrouble(path); !trouble.empty())
        fail(Exit::kInput, "cannot read {}: {}", path, trouble);
}

std::unique_ptr<OIIO::ImageInput> openFile(const std::string& path) {
    checkFile(path);
    OIIO::ImageSpec config;
    config.attribute(kStraight, 1);
    auto file = OIIO::ImageInput::open(path, &config);
    if (!file) fail(Exit::kInput, "cannot read {}: {}", path, firstLine(OIIO::geterror()));
    const std::string format = file->format_name();
    if (format != "png" && format != "tiff" && format != "jpeg" && format != "openexr")
        fail(Exit::kInput, "cannot read {}: it is {}, not a PNG, TIFF, JPEG or EXR", path, format);
    return file;
}

void checkSize(const std::string& path, const OIIO::ImageSpec& spec) {
    const int width = std::max(spec.width, spec.full_width);
    const int height = std::max(spec.height, spec.full_height);
    if (width < 1 || height < 1 || width > kPFMaxWorldSide || height > kPFMaxWorldSide)
        fail(Exit::kInput, "cannot read {}: {} x {} pixels, a side may have 1 to {}", path, width,
             height, kPFMaxWorldSide);
    if (spec.depth > 1) fail(Exit::kInput, "cannot read {}: it is a volume", path);
}

// As asked for, else by the format's custom: EXR is, unless it says otherwise, and TIFF by its tag.
bool isAssociated(const OpenPicture& picture, std::optional<Alpha> asked) {
    const std::string_view format = picture.file->format_name();
    if (picture.at.alpha < 0 || (format != "openexr" && format != "tiff")) return false;
    if (asked) return *asked == Alpha::kAssociated;
    return picture.spec.get_int_attribute(kStraight) == 0 &&
           picture.spec.get_string_attribute(kAlphaAttribute) != "straight";
}

OpenPicture openPicture(const std::string& path, const ReadWishes& wishes) {
    OpenPicture picture{path, openFile(path), {}, {}};
    picture.at = chooseChannels(*picture.file, path, wishes.layer);
    picture.spec = picture.file->spec();
    checkSize(path, picture.spec);
    picture.associated = isAssociated(picture, wishes.alpha);
    return picture;
}

PictureTraits traitsOf(const OpenPicture& picture) {
    const OIIO::ImageSpec& spec = picture.spec;
    PictureTraits traits;
    const bool lies = spec.get_int_attribute("Orientation", 1) > 4;  // on its side
    traits.width = lies ? spec.full_height : spec.full_width;
    traits.height = lies ? spec.full_width : spec.full_height;
    traits.depth = naturalDepth(readType(spec));
    traits.half = spec.channelformat(picture.at.red) == OIIO::TypeDesc::HALF;
    traits.associated = picture.associated;
    traits.format = picture.file->format_name();
    traits.dropped = picture.at.dropped;
    traits.carried = carriedMetadata(spec);
    return traits;
}

// The chosen channels' pixels in one of three types, upright.
OIIO::ImageBuf decode(OpenPicture& picture) {
    OIIO::ImageSpec spec = picture.spec;
    const int first = picture.at.first();
    spec.nchannels = picture.at.behindLast() - first;
    spec.set_format(readType(spec));
    spec.channelformats.clear();
    spec.channelnames.resize(static_cast<std::size_t>(spec.nchannels));
    OIIO::ImageBuf buffer(spec, OIIO::InitializePixels::No);
    OIIO::ImageInput& file = *picture.file;
    const bool read = file.read_image(picture.at.part, 0, first, first + spec.nchannels,
                                      spec.format, buffer.localpixels());
    const std::string trouble = firstLine(file.geterror());
    // A photo with a few odd bytes is shown by every program; one that ends early is not whole.
    const bool harmless = trouble.empty() || (std::string_view(file.format_name()) == "jpeg" &&
                                              trouble.find("Premature end") == std::string::npos);
    if (!read || !harmless)
        fail(Exit::kInput, "cannot read {}: {}", picture.path,
             trouble.empty() ? "broken picture" : trouble);
    return buffer.orientation() == 1 ? buffer : OIIO::ImageBufAlgo::reorient(buffer);
}

// Reads one pixel of a file after another into the host's form.
template <class From, class Pixel>
class PixelTaker {
  public:
    explicit PixelTaker(const OpenPicture& picture)
        : at_(picture.at), first_(picture.at.first()), associated_(picture.associated) {}

    Pixel take(const From* pixel) const {
        pixel -= first_;
        const From* alpha = at_.alpha < 0 ? nullptr : pixel + at_.alpha;
        // Under alpha 0 there is nothing to undo, nor where alpha is white.
        if (associated_ && *alpha != From{0} && *alpha != static_cast<From>(kFromWhite))
            return straight(pixel, static_cast<double>(*alpha) / kFromWhite);
        return {alpha ? plain(*alpha) : static_cast<Channel>(kToWhite), plain(pixel[at_.red]),
                plain(pixel[at_.green]), plain(pixel[at_.blue])};
    }

  private:
    using Channel = decltype(Pixel::alpha);
    static constexpr std::uint32_t kFromWhite = kFileWhite<From>;
    static constexpr std::uint32_t kToWhite = kHostWhite<Pixel>;

    static Channel plain(From value) { return rescaled<Channel>(value, kFromWhite, kToWhite); }
    Pixel straight(const From* pixel, double alpha) const {
        const auto colour = [&](int place) {
            const double ratio = static_cast<double>(pixel[place]) / kFromWhite / alpha;
            return rescaled<Channel>(ratio, kFloatWhite, kToWhite);
        };
        return {plain(pixel[at_.alpha]), colour(at_.red), colour(at_.green), colour(at_.blue)};
    }

    ChannelPlaces at_;
    int first_;
    bool associated_;
};

template <class From, class Pixel>
void putPixels(const OpenPicture& picture, const OIIO::ImageBuf& buffer, Image& image) {
    const PixelTaker<From, Pixel> taker(picture);
    const OIIO::ImageSpec& spec = buffer.spec();
    // The file's pixels may cover another window than the picture; what they leave is clear.
    const int left = spec.x - spec.full_x;
    const int top = spec.y - spec.full_y;
    const int begin = std::max(0, -left);
    const int end = std::min(spec.width, image.width() - left);
    const From* from = static_cast<const From*>(buffer.localpixels());
    for (int y = top; y < top + spec.height; ++y, from += spec.width * spec.nchannels) {
        if (y < 0 || y >= image.height()) continue;
        Pixel* to = image.row<Pixel>(y) + left;
        for (int x = begin; x < end; ++x) to[x] = taker.take(from + x * spec.nchannels);
    }
}

template <class From>
void putPixels(const OpenPicture& picture, const OIIO::ImageBuf& buffer, Image& image) {
    switch (image.depth()) {
        case Depth::bits8:
            return putPixels<From, PF_Pixel>(picture, buffer, image);
        case Depth::bits16:
            return putPixels<From, PF_Pixel16>(picture, buffer, image);
        case Depth::float32:
            return putPixels<From, PF_PixelFloat>(picture, buffer, image);
    }
}

}  // namespace

Picture readPictureFile(const std::string& path, std::optional<Depth> depth,
                        const ReadWishes& wishes) {
    OpenPicture open = openPicture(path, wishes);
    const OIIO::ImageBuf buffer = decode(open);
    const OIIO::ImageSpec& spec = buffer.spec();
    Picture picture{
        Image(spec.full_width, spec.full_height, depth.value_or(naturalDepth(spec.format))),
        traitsOf(open)};
    if (spec.format == OIIO::TypeDesc::UINT8)
        putPixels<std::uint8_t>(open, buffer, picture.image);
    else if (spec.format == OIIO::TypeDesc::UINT16)
        putPixels<std::uint16_t>(open, buffer, picture.image);
    else
        putPixels<float>(open, buffer, picture.image);
    return picture;
}

Image readPicture(const std::string& path, std::optional<Depth> depth) {
    return readPictureFile(path, depth).image;
}

PictureTraits readTraits(const std::string& path, const ReadWishes& wishes) {
    return traitsOf(openPicture(path, wishes));
}

bool isWholePicture(const std::string& path) {
    try {
        (void)readPicture(path, std::nullopt);
        return true;
    } catch (const Failure&) {
        return false;
    }
}

std::string storedFingerprint(const std::string& path) {
    try {
        OpenPicture open = openPicture(path, {});
        std::string fingerprint = stampedFingerprint(open.spec);
        if (!fingerprint.empty()) (void)decode(open);
        return fingerprint;
    } catch (const Failure&) {
        return "";
    }
}

}  // namespace tool
