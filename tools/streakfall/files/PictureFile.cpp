#include "PictureFile.h"

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>
#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <span>

#include "Channel.h"
#include "Failure.h"
#include "PngCheck.h"
#include "SafeFile.h"
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

// Where red, green, blue and alpha stand among a file's channels; alpha -1 when there is none.
struct ChannelPlaces {
    int red, green, blue, alpha;
};

ChannelPlaces findChannels(const OIIO::ImageSpec& spec) {
    const auto named = [&](const char* name) { return spec.channelindex(name); };
    if (named("R") >= 0 && named("G") >= 0 && named("B") >= 0)
        return {named("R"), named("G"), named("B"), spec.alpha_channel};
    const int colours = spec.nchannels - (spec.alpha_channel >= 0 ? 1 : 0);
    if (colours >= 3) return {0, 1, 2, spec.alpha_channel};
    const int grey = spec.alpha_channel == 0 && spec.nchannels > 1 ? 1 : 0;
    return {grey, grey, grey, spec.alpha_channel};
}

OIIO::TypeDesc readType(const OIIO::ImageSpec& spec) {
    if (spec.format == OIIO::TypeDesc::UINT8) return OIIO::TypeDesc::UINT8;
    if (spec.format == OIIO::TypeDesc::UINT16) return OIIO::TypeDesc::UINT16;
    return OIIO::TypeDesc::FLOAT;
}

Depth naturalDepth(OIIO::TypeDesc type) {
    if (type == OIIO::TypeDesc::UINT8) return Depth::bits8;
    return type == OIIO::TypeDesc::UINT16 ? Depth::bits16 : Depth::float32;
}

std::unique_ptr<OIIO::ImageInput> openInput(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) fail(Exit::kInput, "cannot read {}: no such file", path);
    if (std::filesystem::is_directory(status))
        fail(Exit::kInput, "cannot read {}: it is a folder", path);
    if (const std::string trouble = pngTrouble(path); !trouble.empty())
        fail(Exit::kInput, "cannot read {}: {}", path, trouble);
    OIIO::ImageSpec config;
    config.attribute(kStraight, 1);
    auto input = OIIO::ImageInput::open(path, &config);
    if (!input) fail(Exit::kInput, "cannot read {}: {}", path, firstLine(OIIO::geterror()));
    const std::string format = input->format_name();
    if (format != "png" && format != "tiff" && format != "jpeg" && format != "openexr")
        fail(Exit::kInput, "cannot read {}: it is {}, not a PNG, TIFF, JPEG or EXR", path, format);
    return input;
}

void checkSize(const std::string& path, const OIIO::ImageSpec& spec) {
    const int width = std::max(spec.width, spec.full_width);
    const int height = std::max(spec.height, spec.full_height);
    if (width < 1 || height < 1 || width > kPFMaxWorldSide || height > kPFMaxWorldSide)
        fail(Exit::kInput, "cannot read {}: {} x {} pixels, a side may have 1 to {}", path, width,
             height, kPFMaxWorldSide);
    if (spec.depth > 1) fail(Exit::kInput, "cannot read {}: it is a volume", path);
}

// The file's pixels in one of three types, upright.
OIIO::ImageBuf decode(const std::string& path) {
    const auto input = openInput(path);
    OIIO::ImageSpec spec = input->spec();
    checkSize(path, spec);
    spec.set_format(readType(spec));
    spec.channelformats.clear();
    OIIO::ImageBuf buffer(spec, OIIO::InitializePixels::No);
    const bool read = input->read_image(0, 0, 0, spec.nchannels, spec.format, buffer.localpixels());
    const std::string trouble = firstLine(input->geterror());
    // A photo with a few odd bytes is shown by every program; one that ends early is not whole.
    const bool harmless = trouble.empty() || (std::string_view(input->format_name()) == "jpeg" &&
                                              trouble.find("Premature end") == std::string::npos);
    if (!read || !harmless)
        fail(Exit::kInput, "cannot read {}: {}", path,
             trouble.empty() ? "broken picture" : trouble);
    return buffer.orientation() == 1 ? buffer : OIIO::ImageBufAlgo::reorient(buffer);
}

template <class From, class Pixel>
void putPixels(const OIIO::ImageBuf& buffer, std::uint32_t fromWhite, std::uint32_t toWhite,
               Image& image) {
    using Channel = decltype(Pixel::alpha);
    const OIIO::ImageSpec& spec = buffer.spec();
    const ChannelPlaces at = findChannels(spec);
    // The file's pixels may cover another window than the picture; what they leave is clear.
    const int left = spec.x - spec.full_x;
    const int top = spec.y - spec.full_y;
    const From* from = static_cast<const From*>(buffer.localpixels());
    for (int y = top; y < top + spec.height; ++y) {
        for (int x = left; x < left + spec.width; ++x, from += spec.nchannels) {
            if (x < 0 || y < 0 || x >= image.width() || y >= image.height()) continue;
            const auto channel = [&](int place) {
                return rescaled<Channel>(from[place], fromWhite, toWhite);
            };
            const Channel alpha = at.alpha < 0 ? static_cast<Channel>(toWhite) : channel(at.alpha);
            image.row<Pixel>(y)[x] = {alpha, channel(at.red), channel(at.green), channel(at.blue)};
        }
    }
}

template <class From>
void putPixels(const OIIO::ImageBuf& buffer, std::uint32_t fromWhite, Image& image) {
    switch (image.depth()) {
        case Depth::bits8:
            return putPixels<From, PF_Pixel>(buffer, fromWhite, kWhite8, image);
        case Depth::bits16:
            return putPixels<From, PF_Pixel16>(buffer, fromWhite, kHostWhite16, image);
        case Depth::float32:
            return putPixels<From, PF_PixelFloat>(buffer, fromWhite, kFloatWhite, image);
    }
}

// Writing.

struct OutputForm {
    const char* format;  // OpenImageIO's name
    const char* label;
    OIIO::TypeDesc type;
};

std::optional<OutputForm> findOutputForm(const std::string& path, Depth depth) {
    const std::string extension = lowered(std::filesystem::path(path).extension().string());
    if (extension == ".exr") return OutputForm{"openexr", "EXR float", OIIO::TypeDesc::FLOAT};
    if (extension == ".png")
        return depth == Depth::bits8 ? OutputForm{"png", "PNG 8 bits", OIIO::TypeDesc::UINT8}
                                     : OutputForm{"png", "PNG 16 bits", OIIO::TypeDesc::UINT16};
    if (extension != ".tif" && extension != ".tiff") return std::nullopt;
    switch (depth) {
        case Depth::bits8:
            return OutputForm{"tiff", "TIFF 8 bits", OIIO::TypeDesc::UINT8};
        case Depth::bits16:
            return OutputForm{"tiff", "TIFF 16 bits", OIIO::TypeDesc::UINT16};
        case Depth::float32:
            return OutputForm{"tiff", "TIFF float", OIIO::TypeDesc::FLOAT};
    }
    return std::nullopt;
}

OutputForm outputForm(const std::string& path, Depth depth) {
    const auto form = findOutputForm(path, depth);
    if (!form) failUsage("cannot write {}: the name must end in .png, .tif, .tiff or .exr", path);
    return *form;
}

template <class Pixel, class To>
std::vector<std::byte> toFile(const Image& image, std::uint32_t fromWhite, std::uint32_t toWhite) {
    const std::size_t count = image.size() / sizeof(Pixel);
    std::vector<std::byte> bytes(count * 4 * sizeof(To));
    const Pixel* pixel = reinterpret_cast<const Pixel*>(image.data());
    To* to = reinterpret_cast<To*>(bytes.data());
    for (const Pixel* end = pixel + count; pixel < end; ++pixel)
        for (const auto channel : {pixel->red, pixel->green, pixel->blue, pixel->alpha})
            *to++ = rescaled<To>(channel, fromWhite, toWhite);
    return bytes;
}

template <class Pixel>
std::vector<std::byte> toFile(const Image& image, std::uint32_t white, OIIO::TypeDesc type) {
    if (type == OIIO::TypeDesc::UINT8) return toFile<Pixel, std::uint8_t>(image, white, kWhite8);
    if (type == OIIO::TypeDesc::UINT16)
        return toFile<Pixel, std::uint16_t>(image, white, kFileWhite16);
    return toFile<Pixel, float>(image, white, kFloatWhite);
}

std::vector<std::byte> fileSamples(const Image& image, OIIO::TypeDesc type) {
    switch (image.depth()) {
        case Depth::bits8:
            return toFile<PF_Pixel>(image, kWhite8, type);
        case Depth::bits16:
            return toFile<PF_Pixel16>(image, kHostWhite16, type);
        case Depth::float32:
            return toFile<PF_PixelFloat>(image, kFloatWhite, type);
    }
    return {};
}

}  // namespace

Image readPicture(const std::string& path, std::optional<Depth> depth) {
    const OIIO::ImageBuf buffer = decode(path);
    const OIIO::ImageSpec& spec = buffer.spec();
    Image image(spec.full_width, spec.full_height, depth.value_or(naturalDepth(spec.format)));
    if (spec.format == OIIO::TypeDesc::UINT8)
        putPixels<std::uint8_t>(buffer, kWhite8, image);
    else if (spec.format == OIIO::TypeDesc::UINT16)
        putPixels<std::uint16_t>(buffer, kFileWhite16, image);
    else
        putPixels<float>(buffer, kFloatWhite, image);
    return image;
}

std::optional<Depth> pictureDepth(const std::string& path) {
    try {
        return naturalDepth(readType(openInput(path)->spec()));
    } catch (const Failure&) {
        return std::nullopt;
    }
}

bool isWholePicture(const std::string& path) {
    try {
        (void)decode(path);
        return true;
    } catch (const Failure&) {
        return false;
    }
}

std::string describeOutput(const std::string& path, Depth depth) {
    return outputForm(path, depth).label;
}

Depth depthForOutput(const std::string& path) {
    return outputForm(path, Depth::bits8).type == OIIO::TypeDesc::FLOAT ? Depth::float32
                                                                        : Depth::bits8;
}

// The file is made in memory first: what the disk says then comes from the system call itself,
// and not from a library that may drop it.
void writePicture(const std::string& path, const Image& image) {
    const OutputForm form = outputForm(path, image.depth());
    const std::vector<std::byte> samples = fileSamples(image, form.type);
    OIIO::ImageSpec spec(image.width(), image.height(), 4, form.type);
    spec.attribute(kStraight, 1);
    // EXR files get the time of day when nothing stands there. What is no text is not written, so
    // that equal pictures are equal files; the library's word about it is not for the user.
    spec.attribute("DateTime", 0);
    OIIO::attribute("debug", 0);
    const auto output = OIIO::ImageOutput::create(form.format);
    OIIO::Filesystem::IOVecOutput memory;
    if (!output || !output->set_ioproxy(&memory) || !output->open(path, spec) ||
        !output->write_image(form.type, samples.data()) || !output->close())
        fail(Exit::kOutput, "cannot write {}: {}", path,
             firstLine(output ? output->geterror() : OIIO::geterror()));
    writeWhole(path, std::as_bytes(std::span(memory.buffer())));
}

}  // namespace tool
