// The small languages of the command line: frames, file names, sizes, rates, values.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

#include "Failure.h"
#include "FilePattern.h"
#include "FrameList.h"
#include "ParamArguments.h"
#include "RenderOptions.h"

namespace tool {

namespace {

using Frames = std::vector<int>;

// The text of the usage failure that an action ends with; empty when it does not fail.
template <class Action>
std::string usageFailure(Action action) {
    try {
        action();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), Exit::kUsage) << failure.what();
        return failure.what();
    }
    return "";
}

TEST(FrameList, ReadsEveryForm) {
    EXPECT_EQ(parseFrameList("5"), Frames({5}));
    EXPECT_EQ(parseFrameList("-3"), Frames({-3}));
    EXPECT_EQ(parseFrameList("1-4"), Frames({1, 2, 3, 4}));
    EXPECT_EQ(parseFrameList("-8--5"), Frames({-8, -7, -6, -5}));
    EXPECT_EQ(parseFrameList("-1-1"), Frames({-1, 0, 1}));
    EXPECT_EQ(parseFrameList("1-10x3"), Frames({1, 4, 7, 10}));
    EXPECT_EQ(parseFrameList("1-10:4"), Frames({1, 5, 9}));
    EXPECT_EQ(parseFrameList("4-1"), Frames({4, 3, 2, 1}));
    EXPECT_EQ(parseFrameList("10-1x4"), Frames({10, 6, 2}));
    EXPECT_EQ(parseFrameList("7, 1-3,2"), Frames({7, 1, 2, 3})) << "a frame named again is dropped";
    EXPECT_EQ(parseFrameList("1-1000000").size(), 1'000'000u);
}

TEST(FrameList, RefusesWithTheTextInQuestion) {
    for (const char* text :
         {"", "a", "1-", "-", "1--", "1-5x", "1-5x0", "1-5x-2", "5x2", "1,,2", "1.5", "1-1000001",
          "1-999999,2000000-2000001", "99999999999", "10000001"}) {
        const std::string failure = usageFailure([&] { (void)parseFrameList(text); });
        EXPECT_NE(failure.find("--frames"), std::string::npos) << text << ": " << failure;
    }
}

TEST(FrameList, DescribesInShort) {
    EXPECT_EQ(describeFrames({5}), "1 frame: 5");
    EXPECT_EQ(describeFrames({1, 2, 3, 7, 9, 10}), "6 frames: 1-3,7,9-10");
}

std::string fileOf(const char* pattern, int frame) {
    return FilePattern(pattern, "--output").fileFor(frame);
}

TEST(FilePattern, PutsTheNumberIn) {
    EXPECT_EQ(fileOf("a.%04d.png", 7), "a.0007.png");
    EXPECT_EQ(fileOf("a.%4d.png", 7), "a.0007.png");
    EXPECT_EQ(fileOf("a.%d.png", 7), "a.7.png");
    EXPECT_EQ(fileOf("a.####.png", 12345), "a.12345.png");
    EXPECT_EQ(fileOf("a.##.png", 7), "a.07.png");
    EXPECT_EQ(fileOf("a[#####].png", 7), "a00007.png");
    EXPECT_EQ(fileOf("a.####.png", -7), "a.-007.png");
    EXPECT_EQ(fileOf("a.%04d.png", -7), "a.-007.png");
    EXPECT_EQ(fileOf("a@b@@@.png", 7), "a7b007.png");
}

TEST(FilePattern, LeavesOtherSignsAlone) {
    EXPECT_EQ(fileOf("100%.png", 7), "100%.png");
    EXPECT_EQ(fileOf("100%%d.png", 7), "100%d.png");
    EXPECT_EQ(fileOf("a[b].png", 7), "a[b].png");
    EXPECT_EQ(fileOf("a[##.png", 7), "a[07.png");
    EXPECT_EQ(fileOf("shot#2/%04d/a.%03d.png", 7), "shot#2/%04d/a.007.png") << "folders stay";
    EXPECT_FALSE(FilePattern("50%off.png", "--input").hasNumber());
}

TEST(FilePattern, RefusesALoneSignWithAHint) {
    for (const char* text : {"a.#.png", "a[#].png", "#"}) {
        const std::string failure = usageFailure([&] { FilePattern(text, "--input"); });
        EXPECT_NE(failure.find("--input"), std::string::npos) << text;
        EXPECT_NE(failure.find("####"), std::string::npos) << text;
    }
    EXPECT_NE(usageFailure([] { FilePattern("%99999999999d", "--output"); }), "");
    EXPECT_NE(usageFailure([] { FilePattern("", "--output"); }), "");
}

TEST(FrameRate, KnowsWhatDecimalsMean) {
    const auto rate = [](const char* text) {
        const FrameRate result = parseFrameRate(text);
        return std::pair(result.timeScale, result.timeStep);
    };
    EXPECT_EQ(rate("24"), std::pair(24u, 1));
    EXPECT_EQ(rate("29.97"), std::pair(30000u, 1001));
    EXPECT_EQ(rate("23.976"), std::pair(24000u, 1001));
    EXPECT_EQ(rate("30000/1001"), std::pair(30000u, 1001));
    EXPECT_EQ(rate("12.5"), std::pair(12500u, 1000));
    for (const char* text : {"", "0", "-24", "24/0", "1/2/3", "fast", "nan", "1e9"})
        EXPECT_NE(usageFailure([&] { (void)parseFrameRate(text); }), "") << text;
}

TEST(RenderOptions, CatchesWhatCannotWork) {
    const auto failure = [](auto change) {
        RenderTexts texts;
        texts.input = "in.####.png";
        texts.output = "out.####.png";
        texts.frames = "1-3";
        change(texts);
        return usageFailure([&] { RenderOptions options(texts); });
    };
    EXPECT_EQ(failure([](RenderTexts&) {}), "");
    const auto expectNamed = [&](const char* option, auto change) {
        EXPECT_NE(failure(change).find(option), std::string::npos) << option;
    };
    expectNamed("--output", [](RenderTexts& texts) { texts.output = "out.png"; });
    expectNamed(".png", [](RenderTexts& texts) { texts.output = "out.##.jpg"; });
    expectNamed("--chunk", [](RenderTexts& texts) { texts.chunk = "3/2"; });
    expectNamed("--jobs", [](RenderTexts& texts) { texts.jobs = "0"; });
    expectNamed("--half", [](RenderTexts& texts) { texts.half = true; });
    expectNamed("--alpha", [](RenderTexts& texts) { texts.alpha = "premultiplied"; });
    expectNamed("--compression", [](RenderTexts& texts) { texts.compression = "piz"; });
    expectNamed("--compression", [](RenderTexts& texts) { texts.compression = "zip:10"; });
    expectNamed("--format", [](RenderTexts& texts) { texts.output = "-"; });
    expectNamed("--format", [](RenderTexts& texts) { texts.format = "png"; });
    expectNamed("--size", [](RenderTexts& texts) { texts.size = "10x10"; });
    expectNamed("--size", [](RenderTexts& texts) { texts.input = ""; });
    expectNamed("--scale", [](RenderTexts& texts) { texts.scale = "2"; });
    expectNamed("--scale", [](RenderTexts& texts) { texts.scale = "1/0"; });
    expectNamed("--depth", [](RenderTexts& texts) { texts.depth = "12"; });
    expectNamed("--fps", [](RenderTexts& texts) {
        texts.fps = "1000000/1000000";
        texts.frames = "1-5000x2500";
    });
    for (const char* size : {"10", "0x5", "5x-1", "10x10x10", "30001x1", "axb"})
        expectNamed("--size", [&](RenderTexts& texts) {
            texts.input = "";
            texts.size = size;
        });
}

// Parameters as an effect would have added them.
standin::ParamInfo param(int index, int id, PF_ParamType type, const char* name) {
    standin::ParamInfo info;
    info.index = index;
    info.id = id;
    info.type = type;
    info.name = name;
    info.validMax = 100;
    return info;
}

class ParamArgumentsTest : public testing::Test {
  protected:
    ParamArguments read(const ParamTexts& texts) const {
        return ParamArguments(ParamLookup(params), "Version=1.5", texts);
    }
    ParamArguments set(const char* text) const { return read({{}, {text}, {}}); }
    std::string failure(const ParamTexts& texts) const {
        return usageFailure([&] { (void)read(texts); });
    }
    std::string setFailure(const char* text) const { return failure({{}, {text}, {}}); }
    static standin::Value only(const ParamArguments& arguments, int index) {
        return arguments.values().at(index).byFrame.at(0).value.on({200, 50});
    }
    static std::string writeFile(const char* name, const std::string& text) {
        const std::string path = testing::TempDir() + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    const std::vector<standin::ParamInfo> params = {
        param(1, 2, PF_Param_POINT, "Start Point"),   param(2, 5, PF_Param_COLOR, "Color"),
        param(3, 48, PF_Param_GROUP_START, "Taper "), param(4, 13, PF_Param_FLOAT_SLIDER, "Taper"),
        param(5, 49, PF_Param_GROUP_END, ""),         param(6, 18, PF_Param_CHECKBOX, "Repeat"),
        param(7, 24, PF_Param_SLIDER, "Random Seed"), param(8, 57, PF_Param_ANGLE, "H")};
};

TEST_F(ParamArgumentsTest, ReadsEveryKind) {
    using standin::Value;
    EXPECT_EQ(only(set("Taper=-12.5"), 4), Value::number(-12.5));
    EXPECT_EQ(only(set("13=60%"), 4), Value::number(60));
    EXPECT_EQ(only(set("Random Seed= 7 "), 7), Value::number(7));
    EXPECT_EQ(only(set("Repeat=On"), 6), Value::number(1));
    EXPECT_EQ(only(set("Repeat=0"), 6), Value::number(0));
    EXPECT_EQ(only(set("H=22.5"), 8), Value::number(22.5));
    EXPECT_EQ(only(set("Color=#Ff8000"), 2), Value::color(255, 128, 0));
    EXPECT_EQ(only(set("Color=1, 2,3"), 2), Value::color(1, 2, 3));
    EXPECT_EQ(only(set("Start Point=30%,-5.25"), 1), Value::point(60, -5.25));
}

TEST_F(ParamArgumentsTest, RefusesWithTheNameOfTheParameter) {
    for (const char* text :
         {"Taper=", "Taper=1,5", "Taper=fast", "Taper=nan", "Taper=1e999", "Random Seed=1.5",
          "Random Seed=99999999999", "Repeat=2", "Color=#12345", "Color=256,0,0", "Color=1,2",
          "Color=#12345g", "Start Point=1", "Start Point=1,2,3", "Start Point=40000,0", "H=32768"})
        EXPECT_NE(setFailure(text).find(std::string(text, std::strchr(text, '='))),
                  std::string::npos)
            << text << ": " << setFailure(text);
    EXPECT_NE(setFailure("Taper").find("Name=value"), std::string::npos);
}

TEST_F(ParamArgumentsTest, NamesTheNearestForAnUnknownName) {
    EXPECT_NE(setFailure("taper=1").find("\"Taper\""), std::string::npos);
    EXPECT_NE(setFailure("Seed=1").find("\"Random Seed\""), std::string::npos);
    EXPECT_NE(setFailure("99=1").find("\"99\""), std::string::npos);
    EXPECT_NE(setFailure("Taper =1").find("group"), std::string::npos)
        << "the group and the slider differ by a blank";
    EXPECT_NE(setFailure("48=1").find("group"), std::string::npos);
    EXPECT_NE(setFailure("=1").find("\"\""), std::string::npos) << "a group end has no name";
}

TEST_F(ParamArgumentsTest, LaterWins) {
    const std::string file = writeFile("later.json", R"({"Taper": 1, "Random Seed": 2})");
    const ParamArguments arguments = read({{file}, {"Taper=3", "13=4"}, {"Random Seed@1=5,@9=6"}});
    EXPECT_EQ(only(arguments, 4), standin::Value::number(4));
    EXPECT_TRUE(arguments.values().at(7).keyed);
    EXPECT_EQ(arguments.values().at(7).byFrame.size(), 2u);
}

TEST_F(ParamArgumentsTest, KeysTakeValuesWithCommas) {
    const auto keys = read({{}, {}, {"Start Point@-3=1,2,@24=50%,4"}}).values().at(1).byFrame;
    EXPECT_EQ(keys.at(-3).value.on({200, 50}), standin::Value::point(1, 2));
    EXPECT_EQ(keys.at(24).value.on({200, 50}), standin::Value::point(100, 4));
    for (const char* text : {"Taper", "Taper@1", "Taper@a=1", "Taper@1=", "Taper@1=0,@", "@1=2",
                             "Taper@1=0:slowly", "Taper@1=:hold"})
        EXPECT_NE(failure({{}, {}, {text}}), "") << text;
}

TEST_F(ParamArgumentsTest, KeysOfOneParameterAddUpAndKnowTheirWays) {
    const std::string file = writeFile("keys.json", R"({"Taper": {"1": "9:hold", "7": 1}})");
    const auto json = read({{file}, {}, {}});
    EXPECT_EQ(json.values().at(4).byFrame.at(1).behind, standin::Way::hold);
    EXPECT_EQ(json.values().at(4).byFrame.at(7).behind, standin::Way::line);

    const auto keys = read({{file}, {"Repeat=1"}, {"Taper@2=0:ease,@5=1", "13@5=2:hold"}});
    const auto& taper = keys.values().at(4).byFrame;
    ASSERT_EQ(taper.size(), 2u) << "the keys of the file are replaced";
    EXPECT_EQ(taper.at(2).behind, standin::Way::ease);
    EXPECT_EQ(taper.at(5).value.on({1, 1}), standin::Value::number(2));

    const auto back = read({{writeFile("back.json", keys.toJson({1, 1}).dump())}, {}, {}});
    EXPECT_EQ(back.toJson({1, 1}), keys.toJson({1, 1})) << "values are written and come back";
}

TEST_F(ParamArgumentsTest, ReadsJson) {
    const std::string file = writeFile("all.json", R"({"Taper": 1.5, "18": true,
        "Color": [255, 0, 1], "Start Point": ["50%", 3], "Random Seed": {"1": 0, "5": 9}})");
    const ParamArguments arguments = read({{file}, {}, {}});
    EXPECT_EQ(only(arguments, 2), standin::Value::color(255, 0, 1));
    EXPECT_EQ(only(arguments, 1), standin::Value::point(100, 3));
    EXPECT_EQ(only(arguments, 6), standin::Value::number(1));
    EXPECT_EQ(arguments.values().at(7).byFrame.at(5).value.on({1, 1}), standin::Value::number(9));

    EXPECT_EQ(only(read({{writeFile("bom.json", "\xEF\xBB\xBF{\"Taper\": 2}")}, {}, {}}), 4),
              standin::Value::number(2));
    const auto badFailure = [&](const char* text) {
        return failure({{writeFile("bad.json", text)}, {}, {}});
    };
    EXPECT_NE(badFailure("{\"Taper\": 1,\n  Color: 2}").find("line 2, column 3"), std::string::npos)
        << badFailure("{\"Taper\": 1,\n  Color: 2}");
    EXPECT_NE(badFailure(R"({"Taper": 1, "H": 2, "Taper": 3})").find("\"Taper\" is given twice"),
              std::string::npos);
    EXPECT_NE(badFailure(R"({"H": 1, "Taper": 1e999})").find("\"Taper\": the number is too large"),
              std::string::npos);
    for (const char* text : {"{", R"({"Taper": null})", R"({"Taper": {}})", R"({"Tapir": 1})",
                             R"({"Taper": {"1": {"2": 3}}})", "{\"Taper\": 1} x"}) {
        const std::string bad = writeFile("bad.json", text);
        EXPECT_NE(failure({{bad}, {}, {}}).find(bad), std::string::npos) << text;
    }
}

TEST_F(ParamArgumentsTest, ReadsTheEffectsSettingsFile) {
    const std::string file = writeFile("settings.ini",
                                       "; a comment\r\n[Version=1.4]\r\nTaper=1\r\n"
                                       "[Version=1.5]\r\nTaper=2.500000\r\nColor.r=9\r\n"
                                       "Color.g=8\r\nColor.b=7\r\nColor.a=6\r\nRepeat=1\r\n");
    const ParamArguments arguments = read({{file}, {}, {}});
    EXPECT_EQ(only(arguments, 4), standin::Value::number(2.5));
    EXPECT_EQ(only(arguments, 2), standin::Value::color(9, 8, 7));
    EXPECT_EQ(only(arguments, 6), standin::Value::number(1));

    const std::string other = writeFile("other.ini", "[Version=1.4]\nTaper=1\n");
    EXPECT_NE(failure({{other}, {}, {}}).find("Version=1.5"), std::string::npos);
}

TEST_F(ParamArgumentsTest, WarnsOfValuesPastTheRange) {
    EXPECT_TRUE(set("Taper=100").warnings().empty());
    ASSERT_EQ(set("Taper=101").warnings().size(), 1u);
    EXPECT_NE(set("Random Seed=-1").warnings().at(0).find("Random Seed"), std::string::npos);
}

}  // namespace

}  // namespace tool
