// Values on their way from the command line and from files into pictures, and back out of what a
// run leaves behind.
#include <nlohmann/json.hpp>

#include "ProgramFixture.h"

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

class ValuesTest : public ProgramTest {
  protected:
    static constexpr char kFrames[] = "--size 96x64 -q -f 1-9 --set 'Thickness=9' ";

    void write(const std::string& name, const std::string& text) const {
        std::ofstream(path(name), std::ios::binary) << text;
    }
    // Renders nine frames NAME.1.png and on.
    void renderTo(const std::string& name, const std::string& values) const {
        const Outcome outcome =
            render(kFrames + std::string(kDense) + values + " -o " + name + ".%d.png");
        ASSERT_EQ(outcome.code, 0) << outcome.error;
    }
    bool same(const std::string& one, const std::string& other, int frame) const {
        const auto bytes = [&](const std::string& name) {
            return content(fmt::format("{}.{}.png", name, frame));
        };
        EXPECT_FALSE(bytes(one).empty());
        return bytes(one) == bytes(other);
    }
};

TEST_F(ValuesTest, KeysOfOneNameAddUp) {
    renderTo("apart", "--key 'Offset@1=0' --key 'Offset@9=80'");
    renderTo("one", "--key 'Offset@1=0,@9=80'");
    renderTo("last", "--key 'Offset@9=80'");
    for (const int frame : {1, 4, 9}) EXPECT_TRUE(same("apart", "one", frame)) << frame;
    EXPECT_FALSE(same("apart", "last", 1)) << "the first is not lost";
}

TEST_F(ValuesTest, KeysHoldEaseAndRunStraight) {
    renderTo("line", "--key 'Offset@1=0,@9=80'");
    renderTo("hold", "--key 'Offset@1=0:hold,@9=80'");
    renderTo("ease", "--key 'Offset@1=0:ease,@9=80:ease'");
    renderTo("start", "--set Offset=0");
    EXPECT_EQ(
        shell("\"$P\" looks --from line.3.png | grep -E '\"Offset\": \"(20|20.0000.*|19.9999.*)\"'")
            .code,
        0);
    EXPECT_TRUE(same("hold", "start", 8));
    EXPECT_FALSE(same("hold", "start", 9));
    EXPECT_FALSE(same("ease", "line", 3));
    EXPECT_TRUE(same("ease", "line", 9));

    write("keys.json", R"({"Offset": {"1": "0:hold", "9": 80}})");
    renderTo("file", "--params keys.json");
    renderTo("over", "--params keys.json --key 'Offset@1=0,@9=80'");
    for (const int frame : {1, 8, 9}) EXPECT_TRUE(same("file", "hold", frame)) << frame;
    EXPECT_TRUE(same("over", "line", 8)) << "keys of the command line stand for those of a file";
    for (const char* wrong : {"Offset@1=0:slowly", "Offset@x=1", "Offset@1", "Ofset@1=0"})
        expectFailure(render("--size 8x8 -q -o x.png --key '" + std::string(wrong) + "'"), 2,
                      "Offset");
}

TEST_F(ValuesTest, JsonIsReadOverAMarkAndItsErrorsNameThePlace) {
    write("mark.json", "\xEF\xBB\xBF{\"Offset\": 20}");
    renderTo("mark", "--params mark.json");
    renderTo("set", "--set Offset=20");
    EXPECT_TRUE(same("mark", "set", 5));

    const auto expect = [&](const std::string& text, const std::string& thing) {
        SCOPED_TRACE(text);
        write("bad.json", text);
        const Outcome outcome = render("--size 8x8 -q -o x.png --params bad.json");
        expectFailure(outcome, 2, thing);
        expectWords(outcome.error, {"bad.json"});
    };
    expect("{\"Taper\": 1,\n\n   Thickness: 2}", "line 3, column 4");
    expect("{\"Taper\": 1,\n \"Wave\"", "line 2");
    expect(R"({"Taper": 1, "Offset": 2, "Taper": 3})", "\"Taper\" is given twice");
    expect(R"({"Offset": {"1": 2, "1": 3}})", "\"1\" is given twice");
    expect(R"({"Offset": 1, "Taper": 1e999})", "\"Taper\": the number is too large");
    expect(R"({"Random Seed": 12345678901234567890})", "\"Random Seed\"");
    expect(R"({"Random Seed": 1.5})", "\"Random Seed\"");
    expect(R"({"Offset": null})", "\"Offset\"");
    expect(R"({"Offset": {"1": {"2": 3}}})", "\"Offset\"");
    expect(R"({"Color": [1, 2]})", "\"Color\"");
    expect(R"({"Repeat": "maybe"})", "\"Repeat\"");
    expect(R"({"Tapir": 1})", "\"Taper\"");
    expect("[1]", "object");
    EXPECT_FALSE(fs::exists(path("x.png")));
}

// The description is the input's, and stays so.
TEST_F(ValuesTest, ALookComesBackFromARenderedPicture) {
    ASSERT_EQ(shell("oiiotool --pattern constant:color=.2,.4,.6,1 80x50 4 -d uint8 --attrib "
                    "ImageDescription 'a; b=c' -o in.tif")
                  .code,
              0);
    for (const std::string ending : {"png", "exr", "tif"}) {
        SCOPED_TRACE(ending);
        const std::string run = "-i in.tif -q -f 5 ";
        ASSERT_EQ(render(run + "-o a." + ending +
                         " --look rain --set Color=#0a64c8 --set H=12.3 --set 'Random Seed=7' "
                         "--set 'Start Point=33%,7.25' --key 'Taper@1=0,@7=77.7:ease'")
                      .code,
                  0);
        const Outcome look = shell("\"$P\" looks --from a." + ending + " >look.json");
        ASSERT_EQ(look.code, 0) << look.error;
        const Json values = Json::parse(content("look.json"))["values"];
        EXPECT_EQ(values["Color"], "#0a64c8");
        EXPECT_EQ(values["Random Seed"], "7");
        ASSERT_EQ(render(run + "-o b." + ending + " --look look.json").code, 0);
        EXPECT_TRUE(content("a." + ending) == content("b." + ending));
        ASSERT_EQ(shell("oiiotool a." + ending + " --printinfo | grep -q 'a; b=c'").code, 0);
        writePicture(path("plain." + ending), readPicture(path("a." + ending), {}));
        expectFailure(shell("\"$P\" looks --from plain." + ending), 3, "plain");
    }
}

// A look that was fitted to a frame is reported as it was drawn there.
TEST_F(ValuesTest, AReportsValuesGiveTheSamePictures) {
    const std::string run = "--size 320x180 -q -f 1-3 -o ";
    write("look.json", R"({"size": [1920, 1080], "values": {"Thickness": {"1": "60:ease", "3": 90},
        "Density of Lines": 30, "Start Point": "50%,50%"}})");
    for (const std::string look : {"rain", "look.json"}) {
        SCOPED_TRACE(look);
        ASSERT_EQ(render(run + "a.%d.png --look " + look + " --set Taper=40 --report r.json").code,
                  0);
        write("values.json", Json::parse(content("r.json"))["values"].dump());
        ASSERT_EQ(render(run + "b.%d.png --params values.json").code, 0);
        for (const int frame : {1, 2, 3}) EXPECT_TRUE(same("a", "b", frame)) << frame;
    }
    EXPECT_EQ(Json::parse(content("values.json"))["Thickness"]["1"], "10:ease");
}

}  // namespace

}  // namespace tool
