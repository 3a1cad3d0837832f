// A page's panel: greying and linked values by the module, keys, looks, and pages that go.
#include <set>

#include "PanelFixture.h"

namespace tool::panel {

namespace {

std::set<int> disabledIn(const Json& state) { return state.at("disabled").get<std::set<int>>(); }

TEST_F(PanelTest, EverySettingOfTheSwitchesGreysWhatItShould) {
    open();
    const std::string page = openPage();
    const std::vector<std::pair<std::string, std::vector<std::string>>> rules = {
        {"Repeat", {"Random Repeat Num", "Repeat Interval"}},
        {"Enable In/Out", {"Start Thickness", "Start Length", "End Thickness", "End Length"}},
        {"Use Start/End Opacity", {"Start Opacity", "End Opacity", "Opacity Center Position"}},
        {"Enable Taper", {"Taper", "Arch Rate", "Fix Band Form", "Base Length"}},
        {"Fix Band Form", {}},
        {"Enable Wave",
         {"Wave Amount", "Wave Amount Random", "Wave Length", "Wave Length Random", "Wave Phase",
          "Wave Phase Random"}},
    };
    for (unsigned setting = 0; setting < 64; ++setting) {
        std::set<int> wanted;
        Json state;
        for (std::size_t i = 0; i < rules.size(); ++i) {
            const bool on = (setting >> i & 1) != 0;
            state = change(page, rules[i].first, on);
            if (on) continue;
            for (const std::string& control : rules[i].second) wanted.insert(index(control));
        }
        if ((setting >> 4 & 1) != 0) wanted.insert(index("Arch Rate"));
        EXPECT_EQ(disabledIn(state), wanted) << setting;
    }
}

TEST_F(PanelTest, TheLinkTakesTheEndAlongAndKeysKeepTheirWay) {
    open();
    const std::string page = openPage();
    change(page, "Start Point", {10, 20});
    change(page, "Link End Point", true);
    Json state = change(page, "Start Point", {-30.5, 20});
    EXPECT_EQ(state["values"][key("Start Point")], Json({-30.5, 20.0}));
    const Json end = state["values"][key("End Point")];
    EXPECT_NEAR(end[0].get<double>(), 67.2 - 40.5, 1.0 / 65536) << "moved by as much";
    EXPECT_EQ(end[1], 32.0);

    const std::string offset = key("Offset");
    const Json keys = {
        {offset,
         {{"0", {{"value", 0}, {"way", "ease"}}}, {"10", {{"value", 100}, {"way", "hold"}}}}}};
    state = get(Status::kOk, "PUT", page + "/state",
                {{"state", {{"values", state["values"]}, {"keys", keys}}}, {"frame", 5}})["state"];
    EXPECT_EQ(state["values"][offset], 50.0) << "half of the way at half of the time";
    state = change(page, "Offset", 80, 10);
    EXPECT_EQ(state["keys"][offset]["10"], (Json{{"value", 80.0}, {"way", "hold"}}));
    state = change(page, "Offset", 33, 4);
    EXPECT_EQ(state["keys"][offset].size(), 3u);
    EXPECT_EQ(state["keys"][offset]["4"], (Json{{"value", 33.0}, {"way", "line"}}));
    EXPECT_EQ(get(page + "?frame=11")["state"]["values"][offset], 80.0) << "held behind the key";
}

TEST_F(PanelTest, AChangeThatWasOvertakenIsLeftOut) {
    open();
    const std::string page = openPage();
    const auto turned = [&](double value, int turn) {
        return get(Status::kOk, "POST", page + "/change",
                   {{"param", index("Taper")},
                    {"value", value},
                    {"frame", 0},
                    {"turn", turn}})["state"]["values"][key("Taper")];
    };
    EXPECT_EQ(turned(20, 7), 20.0);
    EXPECT_EQ(turned(10, 6), 20.0);
    EXPECT_EQ(turned(30, 8), 30.0);
    EXPECT_EQ(change(page, "Thickness", 3)["values"][key("Thickness")], 3.0);
}

TEST_F(PanelTest, ALookIsFittedAndComesBackFromItsFile) {
    options_.studio.look = "rain";
    open();
    const std::string page = openPage();
    const Json rain = get(page)["state"];
    EXPECT_NEAR(rain["values"][key("Thickness")].get<double>(), 6.0 * 96 / 1920, 1e-9)
        << "the smaller ratio of the sides";
    EXPECT_EQ(get(Status::kOk, "POST", page + "/look", {{"key", "rain"}})["state"]["values"],
              rain["values"]);

    change(page, "Start Point", {-12.75, 300.125});
    get(Status::kOk, "PUT", page + "/state",
        {{"state",
          {{"values", get(page)["state"]["values"]},
           {"keys",
            {{key("End Point"),
              {{"0", {{"value", {10, 20}}, {"way", "ease"}}},
               {"8", {{"value", {33.5, 7}}, {"way", "line"}}}}}}}}}});
    const Json before = get(page + "?frame=3")["state"];
    const Json file = get(page + "/look?name=mine");
    const std::string other = openPage({{"frame", 3}});
    const Json dropped =
        get(Status::kOk, "POST", other + "/look", {{"name", "mine.json"}, {"text", file["text"]}});
    EXPECT_EQ(dropped["state"]["values"], before["values"]);
    EXPECT_EQ(dropped["state"]["keys"][key("End Point")]["0"]["way"], "ease");
    for (const int frame : {0, 3, 8})
        EXPECT_EQ(picture(other, {{"frame", frame}}).image,
                  picture(page, {{"frame", frame}}).image);
}

TEST_F(PanelTest, ThrowsLieFarApartAndNoTwoSheetsAreAlike) {
    open();
    const std::string seeds = "api/throws?param=" + key("Random Seed");
    const Json first = get(seeds)["values"];
    const Json second = get(seeds + "&from=12")["values"];
    std::set<int> all(first.begin(), first.end());
    ASSERT_EQ(all.size(), 12u);
    int last = -10'000;
    for (const int seed : all) {
        EXPECT_GT(seed - last, 300);
        last = seed;
    }
    all.insert(second.begin(), second.end());
    EXPECT_EQ(all.size(), 24u);
    EXPECT_EQ(get("api/throws?count=3&param=" + key("Opacity"))["values"],
              Json({0.0, 50.0, 100.0}));
    refusal(Status::kUnreadable, "GET", "api/throws?param=" + key("Color"));
}

TEST_F(PanelTest, PagesDoNotDisturbEachOtherAndSilentOnesGo) {
    open();
    const std::string one = openPage();
    const std::string two = openPage();
    const Json untouched = get(two)["state"];
    change(one, "Taper", 77);
    EXPECT_EQ(get(two)["state"], untouched);

    // What a page knows is all that is needed to go on.
    const Json known = get(one)["state"];
    panel_->pages().dropSilent(Pages::Clock::now() + std::chrono::minutes(11));
    EXPECT_EQ(get(Status::kMissing, "GET", one)["gone"], true);
    const std::string again = openPage({{"state", known}, {"frame", known["frame"]}});
    EXPECT_EQ(get(again)["state"]["values"], known["values"]);

    std::string oldest = again;
    for (std::size_t i = 0; i < Pages::kMost; ++i) openPage();
    EXPECT_EQ(panel_->pages().count(), Pages::kMost);
    EXPECT_EQ(get(Status::kMissing, "GET", oldest)["gone"], true);
}

}  // namespace

}  // namespace tool::panel
