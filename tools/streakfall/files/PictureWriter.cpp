#include "PictureWriter.h"

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <memory>
#include <span>

#include "Channel.h"
#include "Failure.h"
#include "SafeFile.h"
#include "Text.h"

namespace tool {

namespace {

using standin::Depth;
using standin::Image;

// Rows are handed over in strips, so that a picture is not in memory a second time. A multiple of
// what any EXR compression takes at once.
constexpr int kStripRows = 256;

// One pixel after another from the host's form to the file's, red, green, blue, alpha.
template <class Pixel, class To>
class PixelGiver {
  public:
    PixelGiver(bool associate, bool keepLight) : associate_(associate), keepLight_(keepLight) {}

    void give(const Pixel& pixel, To* to) const {
        to[3] = plain(pixel.alpha);
        if (!associate_ || pixel.alpha == static_cast<Channel>(kFromWhite) ||
            (keepLight_ && pixel.alpha == 0)) {
            to[0] = plain(pixel.red), to[1] = plain(pixel.green), to[2] = plain(pixel.blue);
            return;
        }
        const double alpha = static_cast<double>(pixel.alpha) / kFromWhite;
        const auto colour = [&](Channel value) {
            return rescaled<To>(static_cast<double>(value) / kFromWhite * alpha, kFloatWhite,
                                kToWhite);
        };
        to[0] = colour(pixel.red), to[1] = colour(pixel.green), to[2] = colour(pixel.blue);
    }

  private:
    using Channel = decltype(Pixel::alpha);
    static constexpr std::uint32_t kFromWhite = kHostWhite<Pixel>;
    static constexpr std::uint32_t kToWhite = kFileWhite<To>;

    static To plain(Channel value) { return rescaled<To>(value, kFromWhite, kToWhite); }

    bool associate_;
    bool keepLight_;  // associated colour under alpha 0, which came so from the input
};

// The rows from `y` on of a picture as samples of the file. The library makes half floats of
// floats.
class Samples {
  public:
    Samples(const Image& image, const OutputForm& form, bool keepLight)
        : image_(image),
          type_(form.type == OIIO::TypeDesc::HALF ? OIIO::TypeDesc::FLOAT : form.type),
          associate_(form.alpha == Alpha::kAssociated),
          keepLight_(keepLight) {}

    OIIO::TypeDesc type() const { return type_; }

    void take(int y, int rows, std::vector<unsigned char>& to) const {
        to.resize(static_cast<std::size_t>(image_.width()) * static_cast<std::size_t>(rows) * 4 *
                  type_.size());
        switch (image_.depth()) {
            case Depth::bits8:
                return takeOf<PF_Pixel>(y, to);
            case Depth::bits16:
                return takeOf<PF_Pixel16>(y, to);
            case Depth::float32:
                return takeOf<PF_PixelFloat>(y, to);
        }
    }

  private:
    template <class Pixel>
    void takeOf(int y, std::vector<unsigned char>& to) const {
        if (type_ == OIIO::TypeDesc::UINT8) return fill<Pixel, std::uint8_t>(y, to);
        if (type_ == OIIO::TypeDesc::UINT16) return fill<Pixel, std::uint16_t>(y, to);
        return fill<Pixel, float>(y, to);
    }

    template <class Pixel, class To>
    void fill(int y, std::vector<unsigned char>& bytes) const {
        const PixelGiver<Pixel, To> giver(associate_, keepLight_);
        const Pixel* pixel = image_.row<Pixel>(y);
        To* to = reinterpret_cast<To*>(bytes.data());
        for (To* const end = to + bytes.size() / sizeof(To); to != end; to += 4)
            giver.give(*pixel++, to);
    }

    const Image& image_;
    OIIO::TypeDesc type_;
    bool associate_;
    bool keepLight_;
};

OIIO::ImageSpec specOf(const Image& image, const OutputForm& form, const PictureTraits& traits,
                       const Stamp& stamp) {
    constexpr int kSubFilter = 16;  // PNG: each sample less the one to its left
    OIIO::ImageSpec spec(image.width(), image.height(), 4, form.type);
    if (form.alpha == Alpha::kStraight) {
        spec.attribute("oiio:UnassociatedAlpha", 1);
        // An EXR has no tag for it: one of our own tells it to our reader.
        if (form.format == "openexr") spec.attribute(kAlphaAttribute, "straight");
    }
    std::string compression = form.compression;
    if (form.level >= 0 && form.format == "openexr")
        compression += ":" + std::to_string(form.level);
    if (form.format != "png" && !compression.empty()) spec.attribute("compression", compression);
    if (form.format == "png") {
        spec.attribute("png:compressionLevel", form.level);
        spec.attribute("png:filter", kSubFilter);
    }
    if (form.format == "tiff" && form.level >= 0) spec.attribute("tiff:zipquality", form.level);
    putMetadata(spec, form.format, traits.carried, stamp);
    return spec;
}

bool writeRows(OIIO::ImageOutput& output, const Image& image, const Samples& samples) {
    std::vector<unsigned char> strip;
    for (int y = 0; y < image.height(); y += kStripRows) {
        const int end = std::min(y + kStripRows, image.height());
        samples.take(y, end - y, strip);
        if (!output.write_scanlines(y, end, 0, samples.type(), strip.data())) return false;
    }
    return true;
}

std::string libraryWords(OIIO::ImageOutput* output) {
    const std::string words = output ? output->geterror() : OIIO::geterror();
    return std::string(trimmed(split(trimmed(words), '\n')[0]));
}

}  // namespace

// The file is made in memory: what the disk says then comes from the system call itself, and not
// from a library that may drop it.
std::vector<unsigned char> encodePicture(const std::string& path, const Image& image,
                                         const OutputForm& form, const PictureTraits& traits,
                                         const Stamp& stamp) {
    const Samples samples(image, form, traits.associated);
    std::vector<unsigned char> bytes;
    if (form.format == "rgba") {
        samples.take(0, image.height(), bytes);
        return bytes;
    }
    OIIO::Filesystem::IOVecOutput memory(bytes);
    const auto output = OIIO::ImageOutput::create(form.format);
    if (!output || !output->set_ioproxy(&memory) ||
        !output->open(path, specOf(image, form, traits, stamp)) ||
        !writeRows(*output, image, samples) || !output->close())
        fail(Exit::kOutput, "cannot write {}: {}", path, libraryWords(output.get()));
    return bytes;
}

void useOneThreadEach() {
    OIIO::attribute("exr_threads", -1);  // none beside the caller's
}

void writePicture(const std::string& path, const Image& image) {
    const OutputForm form = chooseOutputForm(path, image.depth(), {});
    const std::vector<unsigned char> bytes = encodePicture(path, image, form);
    writeWhole(path, std::as_bytes(std::span(bytes)));
}

}  // namespace tool
