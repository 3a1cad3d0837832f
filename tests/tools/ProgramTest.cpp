// The program as a user meets it: run as a process, judged by its exit code, by what it says and
// by the files that it leaves.
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <nlohmann/json.hpp>

#include "ProgramFixture.h"

namespace tool {

namespace {

TEST_F(ProgramTest, DrawsWithinTheMatte) {
    makePicture("in.png");
    const Outcome outcome =
        render("-i in.png -o out.png -q --set 'Color=#ff0000'" + std::string(kDense));
    ASSERT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_EQ(outcome.error, "");
    const Image picture = readPicture(path("out.png"), std::nullopt);
    ASSERT_EQ(picture.width(), 64);
    long drawn = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const PF_Pixel& pixel = picture.row<PF_Pixel>(y)[x];
            if (pixel.alpha != 0) ++drawn;
            ASSERT_TRUE(x < 32 || pixel.alpha == 0) << x << ", " << y;
        }
    }
    EXPECT_GT(drawn, 100);
}

TEST_F(ProgramTest, ADepthOfNoLinesKeepsThePictureToTheBit) {
    makePicture("in.png");
    for (const char* form : {"8 -o out.png", "16 -o out.png", "32 --alpha straight -o out.exr",
                             "16 --road legacy -o out.tif"}) {
        const Outcome outcome =
            render("-i in.png -q --set 'Clear Background=off' --set 'Density of Lines=0' --depth " +
                   std::string(form));
        ASSERT_EQ(outcome.code, 0) << outcome.error;
        const std::string file = std::string(form).substr(std::string(form).rfind(' ') + 1);
        EXPECT_EQ(readPicture(path(file), Depth::bits8), readPicture(path("in.png"), std::nullopt))
            << form;
    }
}

TEST_F(ProgramTest, ASequenceIsTheSameEveryTimeAndInAnyOrder) {
    const std::string look =
        "--size 96x64 -q --depth 32 --set Taper=60 --set 'Random Interval=2' "
        "--key 'Offset@1=0,@6=80' -f ";
    ASSERT_EQ(render(look + "1-6 -o a.##.exr").code, 0);
    ASSERT_EQ(render(look + "6-1 -o b.##.exr").code, 0);
    for (const char* number : {"01", "02", "03", "04", "05", "06"})
        EXPECT_TRUE(content(std::string("a.") + number + ".exr") ==
                    content(std::string("b.") + number + ".exr"))
            << number;
    EXPECT_FALSE(content("a.01.exr") == content("a.06.exr"));
}

TEST_F(ProgramTest, HalfSizeKeepsThePlaceOfPoints) {
    const std::string look =
        "--size 200x100 -q --set 'Start Point=100,50' --set 'Length=40' "
        "--set 'End Point=180,50' --set 'Thickness=8' ";
    ASSERT_EQ(render(look + "-o full.png").code, 0);
    ASSERT_EQ(render(look + "-o half.png --scale 1/2").code, 0);
    const auto firstDrawnColumn = [&](const char* name) {
        const Image image = readPicture(path(name), std::nullopt);
        for (int x = 0; x < image.width(); ++x)
            for (int y = 0; y < image.height(); ++y)
                if (image.row<PF_Pixel>(y)[x].alpha != 0) return x;
        return -1;
    };
    EXPECT_EQ(readPicture(path("half.png"), std::nullopt).width(), 100);
    EXPECT_NEAR(firstDrawnColumn("half.png") * 2, firstDrawnColumn("full.png"), 2);
    EXPECT_GT(firstDrawnColumn("full.png"), 50);
}

TEST_F(ProgramTest, BadInputEndsWithItsCodeAndOneLine) {
    makePicture("in.png");
    std::ofstream(path("broken.png")) << content("in.png").substr(0, 60);
    std::ofstream(path("list.json")) << R"({"Thicknes": 3})";
    const auto expect = [&](const std::string& arguments, int code, const std::string& thing) {
        SCOPED_TRACE(arguments);
        expectFailure(render("-q " + arguments), code, thing);
    };
    expect("-i none.png -o out.png", 3, "none.png");
    expect("-i broken.png -o out.png", 3, "broken.png");
    expect("-i . -o out.png", 3, "folder");
    ASSERT_EQ(shell("mkfifo pipe.png").code, 0);
    expect("-i pipe.png -o out.png", 3, "not a plain file");
    fs::remove(path("pipe.png"));
    expect("-i none.%d.png -o out.png --chunk 2/1", 2, "--chunk");
    expect("-i in.png -o out.png --report in.png", 2, "--report");
    expect("-i in.png -o out.png --params none.json", 3, "none.json");
    expect("-i in.png -o out.png --params list.json", 2, "\"Thickness\"");
    expect("-i in.png -o out.png --set Tapre=1", 2, "\"Taper\"");
    expect("-i in.png -o out.png --set 'Taper =1'", 2, "\"Taper\"");
    expect("-i in.png -o out.png --key Taper@x=1", 2, "\"x\"");
    expect("-i in.png -o out.png --fps 30000/1001 --key Taper@10000000=1", 2, "end of time");
    expect("-i in.png -o out.png -f 1-4", 2, "4 frames");
    expect("-i in.#.png -o out.png", 2, "####");
    expect("-i in.png -o out.png -f 1..4", 2, "1..4");
    expect("-i in.png -o in.png", 2, "in.png");
    expect("-i in.png -o out.gif", 2, "out.gif");
    expect("-i in.png -o out.exr --depth 32 --road legacy", 2, "--road");
    expect("-i in.png -o out.png --frobnicate", 2, "--frobnicate");
    expect("-i in.png", 2, "--output");
    expect("-i in.png -o nowhere/out.png", 4, "nowhere");
    expect("-i in.png -o in.png/out.png", 4, "in.png");
    EXPECT_EQ(files(), std::vector<std::string>({"broken.png", "in.png", "list.json"}));
    expectFailure(shell("\"$P\" render -q -i in.png -o out.png --module none.so"), 5, "none.so");
    expectFailure(shell("\"$P\" render -q -i in.png -o out.png --module in.png"), 5, "in.png");
    expectFailure(shell("\"$P\" frobnicate"), 2, "frobnicate");
}

TEST_F(ProgramTest, AMissingPictureCostsItsOwnFrame) {
    for (const char* name : {"in.1.png", "in.3.png"}) makePicture(name);
    expectFailure(render("-q -i in.%d.png -o out.%d.png -f 1-3"), 1, "in.2.png");
    EXPECT_EQ(files(),
              std::vector<std::string>({"in.1.png", "in.3.png", "out.1.png", "out.3.png"}));
    expectFailure(render("-q -i in.%d.png -o out.%d.png -f 5"), 3, "in.5.png");
}

TEST_F(ProgramTest, ExistingFilesAreTreatedAsAsked) {
    ASSERT_EQ(render("--size 32x32 -q -f 1-2 -o a.%d.png").code, 0);
    const std::string whole = content("a.1.png");
    expectFailure(render("--size 32x32 -q -f 1-2 -o a.%d.png --existing error"), 4, "a.1.png");

    fs::resize_file(folder_ / "a.2.png", fs::file_size(folder_ / "a.2.png") - 4);
    const auto before = fs::last_write_time(folder_ / "a.1.png");
    const Outcome outcome =
        render("--size 32x32 -f 1-2 -o a.%d.png --existing skip --progress json");
    EXPECT_EQ(outcome.code, 0) << outcome.error;
    EXPECT_EQ(fs::last_write_time(folder_ / "a.1.png"), before);
    EXPECT_TRUE(isWholePicture(path("a.2.png"))) << "half a file is made anew";
    EXPECT_NE(outcome.error.find(R"("frame":1,"file":"a.1.png","outcome":"skipped")"),
              std::string::npos)
        << outcome.error;
    EXPECT_NE(outcome.error.find(R"("frame":2,"file":"a.2.png","outcome":"written")"),
              std::string::npos);
    EXPECT_TRUE(content("a.1.png") == whole);
}

// The limit on the size of a file stands for a full disk where none can be made.
TEST_F(ProgramTest, AFullDiskKeepsEarlierFramesAndLeavesNoHalfFile) {
    expectFailure(
        shell("ulimit -f 8; \"$P\" render --module effect.so -q --size 800x800 -o out.tif" +
              std::string(kDense)),
        4, "out.tif");
    EXPECT_EQ(files(), std::vector<std::string>());

    fs::create_directory(folder_ / "disk");
    if (shell("unshare -rm mount -t tmpfs -o size=64k tmpfs disk").code != 0)
        GTEST_SKIP() << "this system lets nobody make a small disk";
    const Outcome outcome = shell(
        "unshare -rm sh -c 'mount -t tmpfs -o size=64k tmpfs disk && \"$0\" render --module "
        "effect.so -q --size 640x360 -f 1-20 -o disk/a.%02d.tif --set \"Density of Lines=300\"; "
        "code=$?; ls -A disk; exit $code' \"$P\"");
    expectFailure(outcome, 4, "No space left");
    EXPECT_EQ(outcome.out.rfind("a.01.tif\n", 0), 0u) << outcome.out;
    EXPECT_EQ(outcome.out.find("part"), std::string::npos) << outcome.out;
}

TEST_F(ProgramTest, ASignalLeavesWholeFilesOnly) {
    const Outcome outcome = shell(
        "\"$P\" render --module effect.so -q --size 1280x720 -f 1-100000 -o out.%06d.png & "
        "pid=$!; until ls | grep -q out.000002; do sleep 0.05; done; kill -TERM $pid; "
        "wait $pid");
    EXPECT_EQ(outcome.code, 128 + SIGTERM) << outcome.error;
    ASSERT_GE(files().size(), 2u);
    EXPECT_LT(files().size(), 1000u);
    for (const std::string& file : files()) EXPECT_TRUE(isWholePicture(path(file))) << file;
}

TEST_F(ProgramTest, ADryRunSaysWhatWouldBeDone) {
    makePicture("in.1.png");
    const Outcome outcome = render("-i in.%d.png -o out.##.exr -f 1-2 --dry-run");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out,
              "2 frames: 1-2\nframe 1: in.1.png -> out.01.exr\n"
              "frame 2: in.2.png (missing) -> out.02.exr\n");
    EXPECT_EQ(files(), std::vector<std::string>({"in.1.png"}));
}

TEST_F(ProgramTest, ParamsTellsWhichControlsAreLive) {
    const auto list = nlohmann::json::parse(
        run("params --json --set 'Enable Taper=1' --set 'Fix Band Form=1'").out);
    ASSERT_EQ(list.size(), 62u);
    const auto live = [&](const char* name) {
        for (const auto& entry : list)
            if (entry["name"] == name && entry["kind"] != "group start")
                return entry["live"].get<bool>();
        ADD_FAILURE() << name;
        return false;
    };
    EXPECT_FALSE(live("Arch Rate"));
    EXPECT_TRUE(live("Taper"));
    EXPECT_TRUE(live("Start Length"));
    EXPECT_FALSE(live("Wave Phase"));
}

TEST_F(ProgramTest, SavedDefaultsHoldForTheNextRunUntilTheyAreRestored) {
    const auto thickness = [&] {
        const auto list = nlohmann::json::parse(run("params --json").out);
        return list.at(10)["default"].get<double>();
    };
    EXPECT_EQ(run("defaults save --set Thickness=12.5").code, 1) << "no answer is a no";
    EXPECT_EQ(files(), std::vector<std::string>());
    ASSERT_EQ(run("defaults save --yes --set Thickness=12.5 --set Color=#010203").code, 0);
    EXPECT_EQ(files(), std::vector<std::string>({"effect.ini"}));
    EXPECT_EQ(thickness(), 12.5);
    ASSERT_EQ(render("--size 64x64 -q -o plain.png").code, 0);
    ASSERT_EQ(render("--size 64x64 -q -o stored.png --stored-defaults").code, 0);
    ASSERT_EQ(render("--size 64x64 -q -o file.png --params effect.ini").code, 0);
    EXPECT_EQ(readPicture(path("stored.png"), {}), readPicture(path("file.png"), {}));
    EXPECT_NE(readPicture(path("plain.png"), {}), readPicture(path("file.png"), {}))
        << "stored values were not asked for";

    const Outcome question = shell("echo y | \"$P\" defaults restore --module effect.so --lang ja");
    EXPECT_EQ(question.code, 0) << question.error;
    EXPECT_NE(question.out.find("\u521d\u671f\u72b6\u614b"), std::string::npos) << question.out;
    EXPECT_EQ(thickness(), 5);

    ASSERT_EQ(run("defaults save --yes").code, 0);
    fs::permissions(folder_ / "effect.ini", fs::perms::owner_read);
    expectFailure(run("defaults save --yes --set Thickness=7"), 4, "effect.ini");
    expectFailure(run("defaults restore --yes"), 4, "effect.ini");
}

}  // namespace

}  // namespace tool
