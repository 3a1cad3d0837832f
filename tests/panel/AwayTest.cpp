// What leaves the page: the line for a shell, renders, and stored defaults.
#include <chrono>
#include <functional>
#include <thread>

#include "PanelFixture.h"

namespace tool::panel {

namespace {

// The job's last word, or its word at the time the condition holds.
Json waitFor(const std::function<Json()>& ask, const std::function<bool(const Json&)>& holds) {
    Json told = ask();
    for (int i = 0; i < 600 && !holds(told); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        told = ask();
    }
    return told;
}

bool isDone(const Json& job) { return job.value("done", false); }

TEST_F(PanelTest, ARenderWritesTheBytesOfTheCopiedCommand) {
    makeInput("shot_0001.png");
    makeInput("shot_0002.png", 30);
    options_.studio.input = path("shot_%04d.png");
    options_.studio.look = "impact-fan";
    open();
    const std::string page = openPage();
    change(page, "Color", "#ff0044");
    const Json job = get(Status::kAccepted, "POST", page + "/render", {{"first", 1}, {"last", 3}});
    const Json told = waitFor([&] { return get("api/jobs/" + job.value("job", "")); }, isDone);
    EXPECT_EQ(told["written"], 2);
    EXPECT_EQ(told["failed"], 1);
    EXPECT_NE(told.value("message", "").find("shot_0003.png"), std::string::npos) << told;
    std::vector<std::string> bytes;
    for (const char* name : {"shot-lines.0001.png", "shot-lines.0002.png"}) {
        bytes.push_back(contentOf(path("out") + "/" + name));
        EXPECT_FALSE(bytes.back().empty()) << name;
        fs::remove(path("out") + "/" + name);
    }
    runCommand(get(page + "/command")["command"], "");
    EXPECT_TRUE(contentOf(path("out/shot-lines.0001.png")) == bytes[0]);
    EXPECT_TRUE(contentOf(path("out/shot-lines.0002.png")) == bytes[1]);
}

TEST_F(PanelTest, ARenderThatIsStoppedLeavesWholeFilesOnly) {
    options_.studio.size = "640x360";
    open();
    const std::string page = openPage();
    const Json request = {{"first", 1}, {"last", 2000}};
    const std::string job =
        "api/jobs/" + get(Status::kAccepted, "POST", page + "/render", request).value("job", "");
    refusal(Status::kConflict, "POST", page + "/render", request);
    waitFor([&] { return get(job); }, [](const Json& told) { return told["written"] > 3; });
    EXPECT_EQ(get(Status::kOk, "DELETE", job)["stopped"], true);
    const Json told = waitFor([&] { return get(job); }, isDone);
    EXPECT_TRUE(isDone(told));
    EXPECT_LT(told["written"], 2000);
    int files = 0;
    for (const auto& entry : fs::directory_iterator(path("out"))) {
        EXPECT_TRUE(isWholePicture(entry.path().string())) << entry.path();
        ++files;
    }
    EXPECT_EQ(files, told["written"]);
    refusal(Status::kMissing, "GET", "api/jobs/1");

    // Without a folder there is nothing to write to.
    options_.output.clear();
    open();
    EXPECT_NE(refusal(Status::kConflict, "POST", openPage() + "/render", request).find("-o"),
              std::string::npos);
}

TEST_F(PanelTest, TheCommandIsSafeInAShell) {
    fs::create_directories(path("it's $HOME; \"x\""));
    makeInput("it's $HOME; \"x\"/a [####] b.png");
    fs::rename(path("it's $HOME; \"x\"/a [####] b.png"), path("it's $HOME; \"x\"/a 0007 b.png"));
    options_.studio.input = path("it's $HOME; \"x\"/a [####] b.png");
    open();
    const std::string page = openPage();
    runCommand(get(page + "/command")["command"], "");
    EXPECT_EQ(readPicture(path("out/a  b-lines.0007.png"), Depth::bits8),
              picture(page, {{"frame", 7}}).image);
}

TEST_F(PanelTest, DefaultsAreSavedByTheDialogAndRestored) {
    open();
    const std::string page = openPage();
    change(page, "Taper", 42);
    const Json saved = get(Status::kOk, "POST", page + "/defaults", {{"action", "save"}});
    EXPECT_EQ(saved["file"], path("effect.ini"));
    EXPECT_NE(contentOf(path("effect.ini")).find("Taper=42"), std::string::npos);

    // They hold from the next start on, and not in what a page copies.
    open();
    const std::string other = openPage();
    EXPECT_EQ(get(other)["state"]["values"][key("Taper")], 42.0);
    EXPECT_NE(get(other + "/command").value("command", "").find("Taper=42"), std::string::npos);
    runCommand(get(other + "/command")["command"], "");
    EXPECT_EQ(readPicture(path("out/lines.0000.png"), Depth::bits8),
              picture(other, {{"frame", 0}}).image);
    get(Status::kOk, "POST", other + "/defaults", {{"action", "restore"}});
    EXPECT_FALSE(fs::exists(path("effect.ini")));
}

}  // namespace

}  // namespace tool::panel
