// Sheets of labelled tiles, and what the commands about controls and looks print.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "FrameRenderer.h"
#include "PictureReader.h"
#include "PictureWriter.h"
#include "Reduction.h"
#include "Sheet.h"

namespace tool {

namespace {

using standin::Depth;
using standin::Image;

Image part(const Image& image, int left, int top, int width, int height) {
    Image cut(width, height, image.depth());
    for (int y = 0; y < height; ++y)
        std::copy_n(image.row<PF_Pixel>(top + y) + left, width, cut.row<PF_Pixel>(y));
    return cut;
}

long darkPixels(const Image& image) {
    long count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) count += image.row<PF_Pixel>(y)[x].green < 100;
    return count;
}

TEST(Sheet, HasEachTileAsItIsDrawnAloneAndItsLabelUnderIt) {
    constexpr int kGap = 16, kCaption = 40, kWidth = 160, kHeight = 90;
    EffectSession session(STREAKFALL_MODULE, Defaults::kOwn);
    const Image input = Image::filled(320, 180, Depth::bits8, 1, 0.5, 0.75, 1);
    std::vector<Tile> tiles(3);
    for (int i = 0; i < 3; ++i) {
        tiles[i].labels = {"Taper=" + std::to_string(50 * i), "a second line"};
        tiles[i].params.sets = {tiles[i].labels[0], "Clear Background=off"};
    }
    tiles[2].labels = {};
    const Image sheet = makeSheet(session, input, tiles, {kWidth, 2, 0});
    ASSERT_EQ(sheet.width(), 2 * kWidth + 3 * kGap);
    ASSERT_EQ(sheet.height(), 2 * (kHeight + kCaption) + 3 * kGap);
    for (int i = 0; i < 3; ++i) {
        const int left = kGap + i % 2 * (kWidth + kGap);
        const int top = kGap + i / 2 * (kHeight + kCaption + kGap);
        const ParamArguments arguments = session.readArguments(tiles[i].params);
        FrameTask task;
        task.layer = {320, 180};
        task.input = input;
        const Image alone = FrameRenderer(session, arguments, {}).draw(std::move(task)).picture;
        EXPECT_EQ(part(sheet, left, top, kWidth, kHeight), reduced(alone, 2)) << i;
        const long ink = darkPixels(part(sheet, left, top + kHeight, kWidth, kCaption));
        EXPECT_EQ(ink > 100, i < 2) << i << ": " << ink;
    }
}

TEST(Sheet, CutsALabelThatIsTooLongWithinItsTile) {
    EffectSession session(STREAKFALL_MODULE, Defaults::kOwn);
    const std::vector<Tile> tiles{{{std::string(80, 'W')}, {}}, {{""}, {}}};
    const Image sheet =
        makeSheet(session, Image::opaqueBlack(100, 60, Depth::bits8), tiles, {100, 2, 0});
    const int under = 16 + 60;
    EXPECT_GT(darkPixels(part(sheet, 16, under, 100, 20)), 100);
    EXPECT_EQ(darkPixels(part(sheet, 116, under, sheet.width() - 116, 20)), 0);
}

struct Outcome {
    int code;
    std::string text;  // of both streams
};

Outcome run(const std::string& arguments) {
    const std::string command = "LC_ALL=C '" STREAKFALL_PROGRAM "' " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::string text;
    char block[4096];
    while (const std::size_t count = fread(block, 1, sizeof block, pipe)) text.append(block, count);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text};
}

bool contains(const std::string& text, const std::string& wanted) {
    return text.find(wanted) != std::string::npos;
}

TEST(WordCommands, ExplainPrintsWhatIsKnownOfAControl) {
    const Outcome english = run("explain Attraction");
    EXPECT_EQ(english.code, 0);
    EXPECT_TRUE(contains(english.text, "Grouping > Attraction\n")) << english.text;
    EXPECT_TRUE(contains(english.text, "Default: 50")) << english.text;
    EXPECT_TRUE(contains(run("explain Attraction --lang ja").text, "グループ"));
    EXPECT_TRUE(contains(run("explain 48").text, "fan")) << "a group, by its id";
    const Outcome slip = run("explain Atraction");
    EXPECT_EQ(slip.code, 2);
    EXPECT_TRUE(contains(slip.text, "\"Attraction\"")) << slip.text;
    const std::string all = run("explain").text;
    EXPECT_TRUE(contains(all, "Start Point\n") && contains(all, "Wave > Wave Phase Random\n"));
}

TEST(WordCommands, ParamsListsTheWordsInBothForms) {
    EXPECT_TRUE(contains(run("params").text, "Pulls the lines of each group together"));
    const auto list = nlohmann::json::parse(run("params --json").text);
    for (const auto& param : list)
        EXPECT_EQ(param["words"].is_null(), param["kind"] == "group end") << param["name"];
}

// params --json, and a file that `looks` prints, draw what the look draws.
TEST(WordCommands, ALookComesBackFromWhatIsPrinted) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("streakfall-words-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    const auto file = [&](const char* name) { return (folder / name).string(); };
    const std::string render = "render --size 192x108 -q -f 3 -o ";
    EXPECT_EQ(run("looks tunnel > " + file("a.json")).code, 0);
    EXPECT_EQ(run("params --json --size 192x108 --look tunnel > " + file("b.json")).code, 0);
    EXPECT_EQ(run(render + file("plain.png") + " --look tunnel").text, "");
    for (const char* name : {"a", "b"}) {
        const std::string picture = file((std::string(name) + ".png").c_str());
        EXPECT_EQ(
            run(render + picture + " --look " + file((std::string(name) + ".json").c_str())).text,
            "");
        EXPECT_EQ(readPicture(picture, std::nullopt), readPicture(file("plain.png"), std::nullopt))
            << name;
    }
    const Outcome slip = run(render + file("c.png") + " --look tunel");
    EXPECT_EQ(slip.code, 2);
    EXPECT_TRUE(contains(slip.text, "\"tunnel\"")) << slip.text;
    EXPECT_EQ(run("sheet --looks --size 64x36 --tile 64 -o " + file("sheet.png")).code, 0);
    EXPECT_TRUE(isWholePicture(file("sheet.png")));
    for (const char* wrong :
         {"--looks --vary Taper=0,50", "", "--vary Taper=1,2 --vary H=1,2 --vary V=1,2"})
        EXPECT_EQ(run("sheet -o " + file("d.png") + " " + wrong).code, 2) << wrong;
    std::filesystem::remove_all(folder);
}

}  // namespace

}  // namespace tool
