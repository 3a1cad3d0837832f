// Pictures on their way from a file to the host and back.
#include <OpenImageIO/imageio.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <thread>

#include "Channel.h"
#include "Failure.h"
#include "PictureReader.h"
#include "PictureWriter.h"
#include "Reduction.h"

namespace tool {

namespace {

using standin::Depth;
using standin::Image;

TEST(Channel, SixteenBitsComeBackFromAFile) {
    for (std::uint32_t host = 0; host <= kHostWhite16; ++host) {
        const auto file = rescaled<std::uint16_t>(host, kHostWhite16, kFileWhite16);
        ASSERT_EQ(rescaled<std::uint16_t>(file, kFileWhite16, kHostWhite16), host);
    }
    EXPECT_EQ(rescaled<std::uint16_t>(std::uint16_t{32768}, kHostWhite16, kFileWhite16), 65535);
    EXPECT_EQ(rescaled<std::uint16_t>(std::uint16_t{65535}, kHostWhite16, kFileWhite16), 65535)
        << "what lies past the host's white ends at the file's";
}

TEST(Channel, EightBitsComeBackFromEveryDepth) {
    for (std::uint32_t v = 0; v <= 255; ++v) {
        const auto deep = rescaled<std::uint16_t>(v, kWhite8, kHostWhite16);
        const auto wide = rescaled<float>(v, kWhite8, kFloatWhite);
        ASSERT_EQ(rescaled<std::uint8_t>(deep, kHostWhite16, kWhite8), v);
        ASSERT_EQ(rescaled<std::uint8_t>(wide, kFloatWhite, kWhite8), v);
    }
}

TEST(Channel, FloatsAreCutForWholeNumbersOnly) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(rescaled<std::uint8_t>(kNan, kFloatWhite, kWhite8), 0);
    EXPECT_EQ(rescaled<std::uint8_t>(-kInfinity, kFloatWhite, kWhite8), 0);
    EXPECT_EQ(rescaled<std::uint16_t>(kInfinity, kFloatWhite, kHostWhite16), 32768);
    EXPECT_EQ(rescaled<std::uint16_t>(0.5F, kFloatWhite, kHostWhite16), 16384);
    EXPECT_EQ(rescaled<float>(7.5F, kFloatWhite, kFloatWhite), 7.5F);
}

// Every pixel another colour, also where alpha is 0.
Image makePicture(Depth depth) {
    Image image(7, 5, depth);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.set(x, y, {x / 6.0, y / 4.0, (x + y) / 10.0, (x * y) / 24.0});
    return image;
}

class PictureFileTest : public testing::Test {
  protected:
    void SetUp() override {
        folder_ = std::filesystem::temp_directory_path() /
                  ("streakfall-pictures-" + std::to_string(getpid()));
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::string path(const std::string& name) const { return (folder_ / name).string(); }
    std::size_t filesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder_), {}));
    }
    static std::string bytesOf(const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    static std::string inputFailure(const std::string& file) {
        try {
            (void)readPicture(file, std::nullopt);
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.code(), Exit::kInput);
            return failure.what();
        }
        return "";
    }
    static void writeRaw(const std::string& file, int channels,
                         const std::vector<std::uint8_t>& data, int width) {
        const auto output = OIIO::ImageOutput::create(file);
        OIIO::ImageSpec spec(width, static_cast<int>(data.size()) / width / channels, channels,
                             OIIO::TypeDesc::UINT8);
        spec.attribute("oiio:UnassociatedAlpha", 1);
        ASSERT_TRUE(output->open(file, spec));
        ASSERT_TRUE(output->write_image(OIIO::TypeDesc::UINT8, data.data()));
        ASSERT_TRUE(output->close());
    }

    std::filesystem::path folder_;
};

TEST_F(PictureFileTest, StraightColourComesBackInEveryForm) {
    const std::map<std::string, Depth> forms = {{"a.png", Depth::bits8},
                                                {"b.png", Depth::bits16},
                                                {"c.tif", Depth::bits8},
                                                {"d.tif", Depth::bits16},
                                                {"e.TIFF", Depth::float32}};
    for (const auto& [name, depth] : forms) {
        SCOPED_TRACE(name);
        writePicture(path(name), makePicture(depth));
        EXPECT_EQ(readPicture(path(name), std::nullopt), makePicture(depth));
        EXPECT_TRUE(isWholePicture(path(name)));
        EXPECT_EQ(readTraits(path(name)).depth, depth);
    }
    // Some formats would tell the second in which a file was written.
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    for (const auto& [name, depth] : forms) {
        const std::string first = bytesOf(path(name));
        writePicture(path(name), makePicture(depth));
        EXPECT_TRUE(bytesOf(path(name)) == first) << name << ": equal pictures are equal files";
    }
}

TEST_F(PictureFileTest, NarrowFormsTakeWhatTheyCan) {
    Image bright(1, 1, Depth::float32);
    bright.set(0, 0, {1, 7, -2, 0.5});
    writePicture(path("bright.png"), bright);
    const auto pixel = readPicture(path("bright.png"), std::nullopt).get(0, 0);
    EXPECT_EQ(pixel[1], 1);
    EXPECT_EQ(pixel[2], 0);
    EXPECT_EQ(readPicture(path("bright.png"), std::nullopt).depth(), Depth::bits16);
}

// Values that multiply and divide without a rounding, some beyond white.
TEST_F(PictureFileTest, AssociatedColourIsMadeAndUndone) {
    Image image(3, 1, Depth::float32);
    image.set(0, 0, {0.5, 7, -2, 0.25});
    image.set(1, 0, {1, 3, 0.1, 0});
    image.set(2, 0, {0, 0.5, 0.5, 0.5});
    OutputWishes wishes;
    wishes.alpha = Alpha::kAssociated;
    for (const char* name : {"a.exr", "a.tif"}) {
        SCOPED_TRACE(name);
        const auto form = chooseOutputForm(path(name), Depth::float32, wishes);
        const auto bytes = encodePicture(path(name), image, form);
        std::ofstream(path(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        EXPECT_TRUE(readTraits(path(name)).associated);
        const auto stored = OIIO::ImageInput::open(path(name));
        float pixels[12];
        ASSERT_TRUE(stored->read_image(0, 0, 0, 4, OIIO::TypeDesc::FLOAT, pixels));
        EXPECT_EQ(pixels[0], 3.5F);
        EXPECT_EQ(pixels[8], 0.0F) << "no light where there is no cover";
        Image back = readPicture(path(name), std::nullopt);
        EXPECT_EQ(back.get(0, 0), image.get(0, 0));
        EXPECT_EQ(back.get(1, 0), image.get(1, 0));
    }
    // Light without cover that came from a file stays.
    PictureTraits associated;
    associated.associated = true;
    const auto form = chooseOutputForm("b.exr", Depth::float32, {});
    const auto bytes = encodePicture("b.exr", image, form, associated);
    std::ofstream(path("b.exr"), std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    EXPECT_EQ(readPicture(path("b.exr"), std::nullopt), image);
}

TEST_F(PictureFileTest, GreyAndOpaquePicturesAreCompleted) {
    writeRaw(path("grey.png"), 1, {0, 255, 7}, 3);
    EXPECT_EQ(readPicture(path("grey.png"), std::nullopt).row<PF_Pixel>(0)[2].blue, 7);
    EXPECT_EQ(readPicture(path("grey.png"), std::nullopt).row<PF_Pixel>(0)[2].alpha, 255);
    writeRaw(path("greyalpha.png"), 2, {9, 0}, 1);
    const Image greyAlpha = readPicture(path("greyalpha.png"), std::nullopt);
    EXPECT_EQ(greyAlpha.row<PF_Pixel>(0)[0].green, 9);
    EXPECT_EQ(greyAlpha.row<PF_Pixel>(0)[0].alpha, 0);
    writeRaw(path("colour.jpg"), 3, std::vector<std::uint8_t>(3 * 64, 200), 8);
    const Image photo = readPicture(path("colour.jpg"), Depth::bits16);
    EXPECT_EQ(photo.row<PF_Pixel16>(3)[3].alpha, 32768);
    EXPECT_NEAR(photo.row<PF_Pixel16>(3)[3].red, 200 * 32768 / 255, 300);
}

TEST_F(PictureFileTest, BrokenPicturesAreRefusedByName) {
    EXPECT_NE(inputFailure(path("none.png")).find("none.png"), std::string::npos);
    EXPECT_NE(inputFailure(folder_.string()).find("folder"), std::string::npos);
    std::ofstream(path("empty.png")).close();
    std::ofstream(path("text.exr")) << "not a picture";
    for (const char* name : {"empty.png", "text.exr"})
        EXPECT_NE(inputFailure(path(name)).find(name), std::string::npos);

    Image noisy(64, 64, Depth::float32);
    for (int i = 0; i < 64 * 64; ++i) {
        const double value = (i * 2654435761u % 1000) / 1000.0;
        noisy.set(i % 64, i / 64, {1, value, value * value, 1 - value});
    }
    for (const char* name : {"cut.png", "cut.tif", "cut.exr"}) {
        writePicture(path(name), noisy);
        std::filesystem::resize_file(path(name), std::filesystem::file_size(path(name)) / 2);
        EXPECT_FALSE(isWholePicture(path(name))) << name;
        EXPECT_NE(inputFailure(path(name)).find(name), std::string::npos);
    }
}

TEST_F(PictureFileTest, AFailedWriteLeavesNothingBehind) {
    const auto code = [&](const std::string& file) {
        try {
            writePicture(file, makePicture(Depth::bits8));
        } catch (const Failure& failure) {
            EXPECT_NE(std::string(failure.what()).find(file), std::string::npos);
            return failure.code();
        }
        return Exit::kDone;
    };
    EXPECT_EQ(code(path("missing/out.png")), Exit::kOutput);
    std::filesystem::create_directory(path("folder.png"));
    EXPECT_EQ(code(path("folder.png")), Exit::kOutput);
    std::filesystem::create_symlink("/dev/full", path("device.png"));
    EXPECT_EQ(code(path("device.png")), Exit::kOutput) << "a device must not be renamed over";
    EXPECT_EQ(code(path("out.jpg")), Exit::kUsage);
    EXPECT_EQ(filesInFolder(), 2u);
}

TEST(Reduction, WeighsColourByAlpha) {
    Image image(3, 1, Depth::bits8);
    image.row<PF_Pixel>(0)[0] = {255, 100, 0, 0};
    image.row<PF_Pixel>(0)[1] = {0, 200, 0, 0};
    image.row<PF_Pixel>(0)[2] = {0, 40, 0, 0};
    const Image half = reduced(image, 2);
    ASSERT_EQ(half.width(), 2);
    ASSERT_EQ(half.height(), 1);
    EXPECT_EQ(half.row<PF_Pixel>(0)[0].alpha, 128);
    EXPECT_EQ(half.row<PF_Pixel>(0)[0].red, 100);
    EXPECT_EQ(half.row<PF_Pixel>(0)[1].red, 40) << "clear pixels keep the plain mean";
    EXPECT_EQ(reduced(makePicture(Depth::float32), 1), makePicture(Depth::float32));
}

}  // namespace

}  // namespace tool
