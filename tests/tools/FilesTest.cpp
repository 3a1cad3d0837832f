// What files the program reads and writes, judged by other programs where there are such: oiiotool
// for pictures, ffmpeg for streams.
#include <nlohmann/json.hpp>

#include "ProgramFixture.h"

namespace tool {

namespace {

class FilesTest : public ProgramTest {
  protected:
    // Lines that pass nothing through: the picture is the input's.
    static constexpr char kNoLines[] = " --set 'Density of Lines=0' --set 'Clear Background=off' ";

    bool oiio(const std::string& arguments) const {
        const Outcome outcome = shell("oiiotool " + arguments);
        EXPECT_EQ(outcome.code, 0) << outcome.out << outcome.error;
        return outcome.code == 0;
    }
    std::string info(const std::string& file) const {
        return shell("oiiotool --info -v --stats " + file).out;
    }
};

TEST_F(FilesTest, TranslucentLinesLieOverWhiteAlikeFromEveryFormat) {
    const std::string look =
        "--size 64x64 -q --depth 32 --set 'Color=#ff0000' --set Opacity=50 --set Thickness=40" +
        std::string(kDense);
    ASSERT_EQ(render(look + "-o a.exr").code, 0);
    ASSERT_EQ(render(look + "-o b.tif --alpha premultiplied").code, 0);
    ASSERT_EQ(render(look + "-o c.tif").code, 0);
    ASSERT_TRUE(oiio("--pattern constant:color=1,1,1,1 64x64 4 -d float -o white.exr"));
    for (const char* file : {"a.exr", "b.tif", "c.tif"})
        ASSERT_TRUE(oiio(std::string(file) + " white.exr --over -d float -o over-" + file));
    for (const char* file : {"over-b.tif", "over-c.tif"})
        EXPECT_EQ(shell("idiff -fail 0.0001 over-a.exr " + std::string(file)).code, 0) << file;
    EXPECT_NEAR(readPicture(path("over-a.exr"), Depth::float32).get(32, 32)[1], 1, 1e-5);
    EXPECT_NE(readPicture(path("a.exr"), Depth::float32).get(32, 32)[0], 0) << "a line is there";

    ASSERT_EQ(render("-i a.exr -q -o again.exr" + std::string(kNoLines)).code, 0);
    EXPECT_EQ(shell("idiff -fail 0.000001 a.exr again.exr").code, 0);
    ASSERT_EQ(render("-i a.exr -q -o straight.exr --alpha :straight" + std::string(kNoLines)).code,
              0);
    EXPECT_EQ(readPicture(path("straight.exr"), {}), readPicture(path("a.exr"), {}));
}

// Files of other programs may hold straight colour where it is not the custom.
TEST_F(FilesTest, WhatAFileHoldsCanBeDeclared) {
    oiio("--pattern constant:color=1,.5,0,.5 16x16 4 -d float -o straight.exr");
    const auto average = [&](const std::string& arguments, const std::string& file,
                             const char* pixel) {
        SCOPED_TRACE(arguments);
        const Outcome outcome = render(arguments + " -o " + file + kNoLines);
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        expectWords(info(file), {pixel});
        return outcome.error;
    };
    const std::string log = average("-i straight.exr --alpha straight:", "a.exr",
                                    "Avg: 0.500000 0.250000 0.000000 0.500000");
    expectWords(log, {"input read as straight alpha, as asked", "premultiplied alpha"});
    average("-i straight.exr --alpha straight", "b.exr", "Avg: 1.000000 0.500000 0.000000 0.500");
    average("-i b.exr", "c.exr", "Avg: 0.500000 0.250000 0.000000 0.500");
    average("-i a.exr --alpha :straight", "d.exr", "Avg: 1.000000 0.500000 0.000000 0.500");
    average("-i d.exr --alpha premultiplied", "e.exr", "Avg: 1.000000 0.500000 0.000000 0.500");
    // A picture that is read in another way is another picture.
    const std::string skip = "-i straight.exr -o a.exr --existing skip" + std::string(kNoLines);
    expectWords(render(skip + "--alpha straight:").error, {"1 skipped"});
    expectWords(render(skip).error, {"1 of 1 written"});
    expectFailure(render("-q -i straight.exr -o x.exr --alpha grey"), 2, "\"grey\"");
    expectFailure(render("-q -i straight.exr -o x.png --alpha premultiplied"), 2, "--alpha");
}

TEST_F(FilesTest, TheLayerWithThePictureIsChosen) {
    oiio(
        "--pattern constant:color=2 16x16 1 --chnames Z -d float --attrib oiio:subimagename depth "
        "-o z.exr");
    oiio(
        "--pattern constant:color=.25,.5,.75,1 16x16 4 -d half --attrib oiio:subimagename beauty "
        "-o rgba.exr");
    oiio(
        "--pattern constant:color=.5,0,0,1 16x16 4 --chnames glow.R,glow.G,glow.B,glow.A -d half "
        "-o glow.exr");
    oiio("z.exr rgba.exr --siappend -o parts.exr");
    oiio("rgba.exr glow.exr --chappend -d half -o layers.exr");
    Outcome outcome = render("-i parts.exr -o a.exr" + std::string(kNoLines));
    EXPECT_EQ(outcome.code, 0);
    expectWords(outcome.error, {"parts.exr: left out: depth (Z)"});
    expectWords(info("a.exr"), {"half", "Avg: 0.250000 0.500000 0.750000 1.000000"});
    outcome = render("-i layers.exr -o b.exr --layer glow" + std::string(kNoLines));
    expectWords(info("b.exr"), {"Avg: 0.500000 0.000000 0.000000 1.000000"});
    expectFailure(render("-q -i z.exr -o c.exr"), 3, "depth (Z)");
    expectFailure(render("-q -i layers.exr -o c.exr --layer shine"), 3, "glow (R,G,B,A)");
}

TEST_F(FilesTest, TheDepthFollowsTheSequenceAndNotTheFramesAskedFor) {
    oiio("--pattern constant:color=.2,.4,.6 16x16 3 -d uint8 -o s.1.png -d uint16 -o s.2.png");
    for (const char* frames : {"-f 1-2", "-f 2", "--chunk 2/2", ""}) {
        const Outcome outcome = render("-i s.%d.png -o d.%d.png " + std::string(frames));
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        expectWords(outcome.error, {"8 bits a channel (from s.1.png)"});
        EXPECT_EQ(readTraits(path("d.2.png")).depth, Depth::bits8) << frames;
    }
}

TEST_F(FilesTest, WhatStandsBesideThePixelsIsCarriedOver) {
    oiio(
        "--pattern constant:color=.2,.4,.6,1 16x16 4 -d half --attrib:type=rational "
        "FramesPerSecond 30000/1001 --attrib PixelAspectRatio 2.0 --attrib ImageDescription hello "
        "--attrib:type=timecode smpte:TimeCode 01:02:03:04 -o in.exr");
    ASSERT_EQ(render("-q -i in.exr -o out.exr --set 'Random Seed=7' --compression piz").code, 0);
    expectWords(info("out.exr"), {"half", "30000/1001", "hello", "PixelAspectRatio: 2",
                                  "01:02:03:04", "piz", "Random Seed=7", "streakfall:fingerprint"});
    ASSERT_EQ(render("-q -i in.exr -o out.tif --depth 16 --compression lzw").code, 0);
    expectWords(info("out.tif"), {"uint16", "hello", "PixelAspectRatio: 2", "lzw"});
    ASSERT_EQ(render("-q -i in.exr -o float.exr --depth 32").code, 0);
    expectWords(info("float.exr"), {"float openexr"});
}

TEST_F(FilesTest, MissingFramesAreTreatedAsAsked) {
    for (const char* name : {"in.2.png", "in.4.png"}) makePicture(name);
    const auto outcomeOf = [&](const char* missing) {
        const Outcome outcome = render("-i in.%d.png -o out.%d.png -f 1-4 --missing " +
                                       std::string(missing) + kNoLines);
        EXPECT_EQ(outcome.code, 0) << missing << outcome.error;
        return outcome.error;
    };
    const auto frame = [&](int number) {
        return readPicture(path("out." + std::to_string(number) + ".png"), {});
    };
    expectWords(outcomeOf("skip"), {"2 of 4 written, 2 skipped"});
    EXPECT_FALSE(fs::exists(path("out.3.png")));
    outcomeOf("black");
    EXPECT_EQ(frame(3), Image::opaqueBlack(64, 48, Depth::bits8));
    outcomeOf("hold");
    EXPECT_EQ(frame(3), readPicture(path("in.2.png"), {}));
    EXPECT_EQ(frame(1), frame(2)) << "before the first there is only what follows";
    expectFailure(render("-q -i none.%d.png -o out.%d.png"), 3, "none.%d.png");
}

TEST_F(FilesTest, FramesAreFoundByThePattern) {
    fs::create_directory(path("shot#2"));
    for (const int frame : {8, 9, 10, 1000})
        makePicture(fmt::format("shot#2/in.{:03}.png", frame), 16, 16);
    makePicture("shot#2/in.7.png", 16, 16);  // not as the pattern writes it
    for (const std::string number : {"@@@", "###", "[###]", "%03d"}) {
        const Outcome outcome =
            render("-i 'shot#2/in." + number + ".png' -o 'shot#2/out." + number + ".png' -j 3");
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        EXPECT_EQ(outcome.error.rfind("4 frames: 8-10,1000\n", 0), 0u) << outcome.error;
        std::size_t at = 0;  // in order, whichever was made first
        for (const char* line : {"[1/4] frame 8 ", "[2/4] frame 9 ", "[3/4] frame 10 ",
                                 "[4/4] frame 1000 written shot#2/out.1000.png"})
            EXPECT_NE(at = outcome.error.find(line, at), std::string::npos) << line;
        EXPECT_TRUE(isWholePicture(path("shot#2/out.008.png")));
        fs::remove(path("shot#2/out.008.png"));
    }
    makePicture("x.10.png");
    expectFailure(render("-q -i x.1%d.png -o x.%d.png -f 10,0 --missing skip"), 2,
                  "the input of frame 0");
    const Outcome nothing = render("-i 'shot#2/in.@@@.png' -o none.%d.png -f 8-9 --chunk 1/4");
    EXPECT_EQ(nothing.code, 0) << "more parts than frames";
    expectWords(nothing.error, {"0 frames\n", "0 of 0 written"});
}

TEST_F(FilesTest, AnyNumberOfJobsAndAnySplitGivesTheSameBytes) {
    for (const char* ending : {"png", "tif", "exr"}) {
        const std::string look = std::string("--size 200x120 -q -f 1-9 --set Taper=60 ") +
                                 "--key 'Offset@1=0,@5=80:hold' --key 'Offset@9=10' -o ";
        ASSERT_EQ(render(look + "a.%d." + ending + " -j 1").code, 0);
        ASSERT_EQ(render(look + "b.%d." + ending + " -j 8").code, 0);
        for (const char* chunk : {"1/4", "2/4", "3/4", "4/4"})
            ASSERT_EQ(render(look + "c.%d." + ending + " --chunk " + chunk).code, 0);
        for (int frame = 1; frame <= 9; ++frame) {
            const std::string end = "." + std::to_string(frame) + "." + ending;
            EXPECT_TRUE(content("a" + end) == content("b" + end)) << end;
            EXPECT_TRUE(content("a" + end) == content("c" + end)) << end;
        }
    }
}

TEST_F(FilesTest, StreamsHoldTheFramesInOrder) {
    const std::string look =
        "--size 64x48 -q -f 1-12 -j 4 --set 'Random Interval=1'" + std::string(kDense);
    ASSERT_EQ(render(look + "-o a.%02d.png").code, 0);
    ASSERT_EQ(shell("\"$P\" render --module effect.so " + look + "-o - --format rgba >raw").code,
              0);
    std::string frames;
    for (int frame = 1; frame <= 12; ++frame) {
        const Image image = readPicture(path(fmt::format("a.{:02}.png", frame)), {});
        for (int i = 0; i < 64 * 48; ++i) {
            const PF_Pixel& pixel = image.row<PF_Pixel>(0)[i];
            for (const auto channel : {pixel.red, pixel.green, pixel.blue, pixel.alpha})
                frames += static_cast<char>(channel);
        }
    }
    EXPECT_TRUE(content("raw") == frames);
    EXPECT_EQ(shell("echo '{\"Thickness\": 9}' | \"$P\" render --module effect.so -q --size 64x64 "
                    "-o p.png --params -")
                  .code,
              0);
    if (shell("command -v ffmpeg").code != 0) GTEST_SKIP() << "there is no ffmpeg";
    const Outcome outcome =
        shell("\"$P\" render --module effect.so " + look +
              "-o - --format png | ffmpeg -v error "
              "-f image2pipe -framerate 24 -i - -f rawvideo -pix_fmt rgba back");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_TRUE(content("back") == frames);
}

}  // namespace

}  // namespace tool
