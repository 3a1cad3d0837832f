// Runs that meet what nights bring: logs and disks that are full, signals, kills, and other runs of
// the same files.
#include <sys/resource.h>

#include <csignal>
#include <nlohmann/json.hpp>
#include <random>

#include "ProgramFixture.h"

namespace tool {

namespace {

class NightTest : public ProgramTest {
  protected:
    // A line of the shell that renders; 0 is for the rest of the shell's line.
    Outcome renderWith(const std::string& arguments, const std::string& behind) const {
        return shell("\"$P\" render --module effect.so " + arguments + " " + behind);
    }
    std::vector<std::string> leftovers() const {
        std::vector<std::string> names = files();
        std::erase_if(names, [](const std::string& name) { return !name.ends_with(".part"); });
        return names;
    }
    void expectWhole(int count) const {
        EXPECT_EQ(files().size(), static_cast<std::size_t>(count));
        for (const std::string& file : files()) EXPECT_TRUE(isWholePicture(path(file))) << file;
    }
};

TEST_F(NightTest, ALogThatCannotBeWrittenCostsNoFrame) {
    const std::string frames = "--size 32x32 -f 1-5 -o ";
    EXPECT_EQ(renderWith(frames + "a.%d.png", "2>/dev/full").code, 0);
    EXPECT_EQ(renderWith(frames + "b.%d.png", "2>&-").code, 0);
    EXPECT_EQ(renderWith(frames + "c.%d.png", ">&- 2>&- <&-").code, 0);
    EXPECT_EQ(shell("{ \"$P\" render --module effect.so " + frames +
                    "d.%d.png 2>&1; echo $? >code; } | head -2")
                  .code,
              0);
    EXPECT_EQ(content("code"), "0\n");
    fs::remove(path("code"));
    expectWhole(20);
    for (const char* command : {"params", "about", "params --json"}) {
        expectFailure(shell("\"$P\" " + std::string(command) + " >/dev/full"), 4,
                      "standard output");
        EXPECT_EQ(shell("{ \"$P\" " + std::string(command) + "; echo $? >code; } | head -1").code,
                  0);
        EXPECT_EQ(content("code"), "0\n") << command;
    }
}

TEST_F(NightTest, ASignalIsHeardInTheFrame) {
    const Outcome outcome = shell(
        "\"$P\" render --module effect.so --size 1280x720 -f 1-40 -j 2 -o a.%02d.png --set "
        "'Density of Lines=1000' --set Thickness=500 --set Length=2000 --progress plain 2>log & "
        "pid=$!; until test -s log; do sleep 0.05; done; kill -TERM $pid; wait $pid");
    EXPECT_EQ(outcome.code, 128 + SIGTERM);
    const std::string log = content("log");
    expectWords(log, {"interrupted: ", " of 40 written; resume with --existing skip\n"});
    fs::remove(path("log"));
    expectWhole(static_cast<int>(files().size()));
    EXPECT_LT(files().size(), 40u);
}

TEST_F(NightTest, ASecondSignalEndsAtOnceAndLeavesNoHalfFile) {
    const Outcome outcome = shell(
        "\"$P\" render --module effect.so -q --size 1280x720 -f 1-100000 -o a.%06d.tif "
        "--compression "
        "none & pid=$!; until ls | grep -q a.000002; do sleep 0.05; done; kill -TERM $pid; kill "
        "-TERM $pid; wait $pid");
    EXPECT_EQ(outcome.code, 128 + SIGTERM);
    EXPECT_EQ(leftovers(), std::vector<std::string>());
    for (const std::string& file : files()) EXPECT_TRUE(isWholePicture(path(file))) << file;
}

TEST_F(NightTest, ASkipWantsWhatThisRunWouldMake) {
    const std::string base = "--size 48x32 -f 1-2 --existing skip ";
    const auto written = [&](const std::string& arguments) {
        const Outcome outcome = render(base + arguments);
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        return outcome.error.find("2 of 2 written") != std::string::npos;
    };
    for (const std::string ending : {"png", "tif", "exr"}) {
        SCOPED_TRACE(ending);
        const std::string file = "-o a.%d." + ending;
        EXPECT_TRUE(written(file));
        EXPECT_FALSE(written(file)) << "whole, and made from the same";
        EXPECT_TRUE(written(file + " --set Color=#010203"));
        EXPECT_TRUE(written(file + " --set Color=#010203 --depth 16"));
        EXPECT_TRUE(written("--fps 25 " + file));
    }
    makePicture("in.1.png");
    makePicture("in.2.png");
    const std::string fromInput = "-f 1-2 --existing skip -i in.%d.png -o b.%d.png";
    ASSERT_EQ(render(fromInput).code, 0);
    makePicture("in.2.png", 66);
    expectWords(render(fromInput).error, {"1 of 2 written, 1 skipped"});

    // Metadata that was lost: a report of the run that wrote the file stands for it.
    ASSERT_EQ(render("--size 48x32 -q -o c.png --report r.json").code, 0);
    writePicture(path("c.png"), readPicture(path("c.png"), {}));
    fs::copy_file(path("c.png"), path("d.png"));
    expectWords(render("--size 48x32 -o c.png --existing skip --report r.json").error,
                {"1 skipped"});
    expectWords(render("--size 48x32 -o d.png --existing skip --report r.json").error,
                {"1 of 1 written"});
}

TEST_F(NightTest, LeftoversOfADayAreCleared) {
    const auto leave = [&](const std::string& name, int hours) {
        std::ofstream(path(name)) << "x";
        fs::last_write_time(path(name),
                            fs::file_time_type::clock::now() - std::chrono::hours(hours));
    };
    leave(".a.1.png.node7-00112233445566ff.part", 25);
    leave(".a.2.png.node7-00112233445566ff.part", 1);
    leave(".b.1.png.node7-00112233445566ff.part", 99);
    const Outcome outcome = render("--size 32x32 -f 1-2 -o a.%d.png");
    expectWords(outcome.error, {"removed", ".a.1.png.node7-"});
    EXPECT_EQ(leftovers(), std::vector<std::string>({".a.2.png.node7-00112233445566ff.part",
                                                     ".b.1.png.node7-00112233445566ff.part"}));
}

TEST_F(NightTest, LogsAndReportsTellWhatBecameOfEachFrame) {
    for (const char* name : {"in.1.png", "in.3.png"}) makePicture(name);
    Outcome outcome = render("-i in.%d.png -o a.%d.png -f 1-4 -j 1");
    EXPECT_EQ(outcome.code, 1);
    expectWords(outcome.error, {"4 frames: 1-4\n", "[1/4] frame 1 written a.1.png, ", " s left\n",
                                "streakfall: [2/4] frame 2: cannot read in.2.png: no such file\n"});
    EXPECT_TRUE(outcome.error.ends_with("\n2 of 4 written, 2 failed: 2,4\n")) << outcome.error;

    outcome = render("-i in.%d.png -o a.%d.png -f 1-4 --progress json --report r.json");
    std::vector<nlohmann::json> events;
    std::istringstream lines(outcome.error);
    for (std::string line; std::getline(lines, line);)
        events.push_back(nlohmann::json::parse(line));
    EXPECT_EQ(events.front()["event"], "start");
    EXPECT_EQ(events.back()["event"], "end");
    EXPECT_EQ(events.back()["failed"], nlohmann::json({2, 4}));
    const auto report = nlohmann::json::parse(content("r.json"));
    EXPECT_EQ(report["frames"][2]["status"], "written");
    EXPECT_EQ(report["frames"][2]["fingerprint"].get<std::string>().size(), 32u);
    EXPECT_EQ(report["totals"]["written"], 2);
    EXPECT_EQ(report["exit"], 1);
    expectWords(render("--size 32x32 -q -o n.png --set Opacity=150").error,
                {"note: \"Opacity\": 150"});
}

TEST_F(NightTest, AReadOnlyFolderIsToldBeforeAnyFrame) {
    if (geteuid() == 0) {
        fs::create_directory(path("disk"));
        if (shell("unshare -rm true").code != 0) GTEST_SKIP() << "root writes everywhere";
        const Outcome outcome = shell(
            "unshare -m sh -c 'mount -t tmpfs -o ro tmpfs disk && \"$0\" render --module effect.so "
            "-q --size 32x32 -o disk/a.png' \"$P\"");
        expectFailure(outcome, 4, "disk");
        return;
    }
    fs::create_directory(path("locked"));
    fs::permissions(path("locked"), fs::perms::owner_read | fs::perms::owner_exec);
    expectFailure(render("-q --size 32x32 -o locked/a.png"), 4, "locked");
}

// The seed is fixed; where the kills fall depends on the machine all the same.
TEST_F(NightTest, KilledRunsAreTakenUpUntilAllIsWhole) {
    std::mt19937 random(11);
    const std::string run =
        "\"$P\" render --module effect.so -q --size 320x180 -f 1-60 -o a.%02d.png --existing skip";
    for (int attempt = 0; attempt < 8; ++attempt) {
        const std::string seconds = fmt::format("0.{:03}", 30 + random() % 250);
        shell(run + " & pid=$!; sleep " + seconds + "; kill -KILL $pid; wait $pid");
    }
    ASSERT_EQ(shell(run).code, 0);
    for (const std::string& name : leftovers()) fs::remove(path(name));
    expectWhole(60);
}

// The bound that the help of the program gives.
TEST_F(NightTest, MemoryStaysBelowTheFormulaOfTheHelp) {
    constexpr long kJobs = 4, kPicture = 1280L * 720 * 16, kFile = kPicture;
    const pid_t child = fork();
    if (child == 0) {
        execl(STREAKFALL_PROGRAM, STREAKFALL_PROGRAM, "render", "-q", "--size", "1280x720",
              "--depth", "32", "-f", "1-12", "-j", "4", "--compression", "none", "-o",
              path("a.%02d.exr").c_str(), nullptr);
        _exit(127);
    }
    int status = 0;
    rusage used{};
    ASSERT_EQ(wait4(child, &status, 0, &used), child);
    ASSERT_EQ(status, 0);
    EXPECT_GT(used.ru_maxrss, kPicture / 1024) << "in KiB";
    if (std::string_view(STREAKFALL_PROGRAM).find("/release/") == std::string_view::npos)
        GTEST_SKIP() << "sanitizers need memory of their own";
    EXPECT_LT(used.ru_maxrss, (kJobs * (4 * kPicture + 2 * kFile) + 200'000'000) / 1024);
}

TEST_F(NightTest, RunsOfTheSameFilesAtOnceDoNotHarmEachOther) {
    const std::string run =
        "\"$P\" render --module effect.so -q --size 320x180 -f 1-40 -o a.%02d.png";
    for (int round = 0; round < 3; ++round) {
        const Outcome outcome = shell(run + " & one=$!; " + run + " & two=$!; " + run +
                                      " & three=$!; wait $one && wait $two && wait $three");
        EXPECT_EQ(outcome.code, 0) << outcome.error;
        expectWhole(40);
    }
}

}  // namespace

}  // namespace tool
