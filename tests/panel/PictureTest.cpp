// What a page is shown is what a render writes, whoever else draws meanwhile.
#include <chrono>
#include <thread>

#include "PanelFixture.h"

namespace tool::panel {

namespace {

using Seconds = std::chrono::duration<double>;

TEST_F(PanelTest, PicturesAreThoseOfTheCopiedCommand) {
    makeInput("in.0003.png");
    makeInput("in.0004.png", 40);
    for (const char* input : {"", "in.####.png"}) {
        options_.studio.input = *input == '\0' ? "" : path(input);
        options_.studio.size = "96x64";
        options_.output = path("out");
        open();
        const std::string page = openPage();
        for (unsigned seed = 0; seed < 3; ++seed) {
            changeAll(page, dialled(seed), 3);
            if (seed == 2) {
                Json state = get(page)["state"];
                state["keys"] = {
                    {key("Offset"),
                     {{"-2", {{"value", -40.5}, {"way", "ease"}}}, {"9", {{"value", 70}}}}},
                    {key("End Point"),
                     {{"2", {{"value", {5, 60}}, {"way", "hold"}}}, {"4", {{"value", {90, 1}}}}}}};
                get(Status::kOk, "PUT", page + "/state", {{"state", state}});
            }
            const std::string command =
                get(page + "/command?first=3&last=4")["command"].get<std::string>();
            for (const int divisor : {1, 3}) {
                runCommand(command, divisor == 1 ? "" : "--scale 1/3");
                for (const int frame : {3, 4}) {
                    const std::string file =
                        fmt::format("out/{}lines.000{}.png", *input == '\0' ? "" : "in-", frame);
                    EXPECT_EQ(picture(page, {{"frame", frame}, {"divisor", divisor}}).image,
                              readPicture(path(file), Depth::bits8))
                        << command << frame;
                }
            }
        }
    }
}

TEST_F(PanelTest, OneRequestChangesAndDraws) {
    open();
    const std::string page = openPage();
    const Shown before = picture(page, {{"frame", 0}});
    const Shown after =
        picture(page, {{"frame", 0}, {"change", {{"param", index("Thickness")}, {"value", 20}}}});
    EXPECT_EQ(after.head["state"]["values"][key("Thickness")], 20.0);
    EXPECT_NE(after.image, before.image);
    EXPECT_EQ(picture(page, {{"frame", 0}}).image, after.image);
    EXPECT_EQ(picture(page, {{"frame", 0}, {"state", before.head["state"]}}).image, before.image);

    // A thumbnail tries values and leaves the page as it is.
    const Json thick = {{key("Thickness"), 20}};
    const Shown tried = picture(page, {{"frame", 0}, {"slot", "thumbnail"}, {"with", thick}});
    EXPECT_EQ(tried.image, after.image);
    EXPECT_EQ(picture(page, {{"frame", 0}}).image, before.image);
    refusal(Status::kUnreadable, "POST", page + "/picture",
            {{"frame", 0}, {"slot", "thumbnail"}, {"state", before.head["state"]}});
}

TEST_F(PanelTest, BackdropsAreWhatTheEffectGets) {
    makeInput("in.png");
    options_.studio.input = path("in.png");
    open();
    const std::string page = openPage();
    EXPECT_EQ(picture(page, {{"frame", 7}, {"bare", true}}).image,
              readPicture(path("in.png"), std::nullopt));
    EXPECT_EQ(picture(page, {{"frame", 7}, {"bare", true}, {"backdrop", "black"}}).image,
              Image::opaqueBlack(96, 64, Depth::bits8));
    change(page, "Clear Background", false);
    change(page, "Density of Lines", 0);
    for (const char* backdrop : {"input", "black", "checker"})
        EXPECT_EQ(picture(page, {{"frame", 7}, {"backdrop", backdrop}}).image,
                  picture(page, {{"frame", 7}, {"bare", true}, {"backdrop", backdrop}}).image);

    // A file that was written anew is read anew; one that went away is missed by name.
    makeInput("in.png", 50);
    EXPECT_EQ(picture(page, {{"frame", 7}}).image, readPicture(path("in.png"), std::nullopt));
    fs::remove(path("in.png"));
    EXPECT_NE(refusal(Status::kFailed, "POST", page + "/picture", {{"frame", 7}}).find("in.png"),
              std::string::npos);
}

TEST_F(PanelTest, ThreadOfANewerRequestStopsTheOlder) {
    options_.studio.size = "1920x1080";
    open();
    const std::string page = openPage();
    changeAll(page, kSlow);
    const Json slow = {{"frame", 0}, {"turn", 1}};
    const auto start = std::chrono::steady_clock::now();
    Answer older;
    std::thread drawing([&] { older = send("POST", page + "/picture", slow); });
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    const Json quick = {{"frame", 0},
                        {"turn", 2},
                        {"divisor", 8},
                        {"change", {{"param", index("Thickness")}, {"value", 1}}}};
    EXPECT_EQ(picture(page, quick).head["state"]["values"][key("Thickness")], 1.0);
    drawing.join();
    EXPECT_EQ(older.status, Status::kConflict)
        << "drawn in " << Seconds(std::chrono::steady_clock::now() - start).count();
    EXPECT_EQ(Json::parse(older.text)["state"]["values"][key("Thickness")], 300.0);
    EXPECT_EQ(send("POST", page + "/picture", slow).status, Status::kConflict)
        << "it came behind a newer one";
}

TEST_F(PanelTest, ThreadsOfSeveralPagesDrawAsOneWould) {
    open();
    constexpr unsigned kPages = 4;
    std::vector<std::string> pages;
    std::vector<Image> alone;
    for (unsigned i = 0; i < kPages; ++i) {
        pages.push_back(openPage());
        changeAll(pages[i], dialled(i));
        alone.push_back(picture(pages[i], {{"frame", 1}}).image);
    }
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < 2 * kPages; ++i)
        threads.emplace_back([&, i] {
            const bool thumbnail = i >= kPages;
            for (int n = 0; n < 10; ++n) {
                Json request = {{"frame", 1}, {"slot", thumbnail ? "thumbnail" : "main"}};
                if (!thumbnail)
                    request["change"] = {{"param", 11},
                                         {"value", dialled(i % kPages)["Thickness"]}};
                EXPECT_EQ(picture(pages[i % kPages], request).image, alone[i % kPages]);
                const std::string passing = openPage();
                picture(passing, {{"frame", n}, {"divisor", 2}});
                get(Status::kOk, "DELETE", passing);
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(panel_->studio().session().host().ledger().violationText(), "");
}

}  // namespace

}  // namespace tool::panel
