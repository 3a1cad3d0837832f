// The words of the controls and the looks that ship, against the parameters that the effect has.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>

#include "EffectSession.h"
#include "Failure.h"
#include "FrameRenderer.h"
#include "Look.h"
#include "ParamText.h"
#include "Variation.h"

namespace tool {

namespace {

using standin::Depth;
using standin::Image;
using standin::ParamInfo;

constexpr std::array kLanguages{Language::kEnglish, Language::kJapanese};

class WordsTest : public testing::Test {
  protected:
    [[nodiscard]] const std::vector<ParamInfo>& params() { return session_.host().params(); }
    [[nodiscard]] ParamArguments argumentsOf(const std::string& look) const {
        ParamTexts texts;
        texts.looks = {look};
        return session_.readArguments(texts);
    }
    [[nodiscard]] Image draw(const ParamArguments& arguments, standin::LayerSize size, int frame) {
        FrameRenderer renderer(session_, arguments, {});
        FrameTask task;
        task.frame = frame;
        task.layer = size;
        task.input = Image::filled(size.width, size.height, Depth::bits8, 1, 0.5, 0.5, 0.5);
        return renderer.draw(std::move(task)).picture;
    }

    EffectSession session_{STREAKFALL_MODULE, Defaults::kOwn};
};

bool hasLetterPastAscii(const std::string& text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
}

TEST_F(WordsTest, EveryNamedParameterIsExplainedInBothLanguages) {
    for (const ParamInfo& param : params()) {
        for (const Language language : kLanguages) {
            const ControlWords* words = wordsOf(param.id, language);
            ASSERT_EQ(words != nullptr, !param.name.empty()) << param.id << " " << param.name;
            if (words == nullptr) continue;
            EXPECT_EQ(hasLetterPastAscii(words->what), language == Language::kJapanese)
                << param.name << ": " << words->what;
            EXPECT_TRUE(words->what.ends_with(language == Language::kEnglish ? "." : "。"))
                << param.name;
            EXPECT_EQ(words->with.empty(), wordsOf(param.id, Language::kEnglish)->with.empty())
                << param.name;
            EXPECT_EQ(words->hint.empty(), wordsOf(param.id, Language::kEnglish)->hint.empty())
                << param.name;
            EXPECT_TRUE(!hasRange(param) || !words->unit.empty() || param.name == "Random Seed")
                << param.name;
        }
    }
}

// What the panel greys out while a switch is off says that it works only with that switch.
TEST_F(WordsTest, WhatIsGreyedOutNamesItsSwitch) {
    standin::Instance instance = session_.makeInstance({640, 360});
    for (const ParamInfo& box : params()) {
        if (box.type != PF_Param_CHECKBOX) continue;
        std::set<A_long> live[2];
        for (const double on : {0.0, 1.0}) {
            instance.storeDefaults();
            instance.storeValue(box.id, standin::Value::number(on));
            ASSERT_EQ(instance.updatePanel(), PF_Err_NONE);
            for (const ParamInfo& param : params())
                if (param.hasValue() && instance.enabled(param.id)) live[on != 0].insert(param.id);
        }
        for (const ParamInfo& param : params()) {
            if (live[0].contains(param.id) == live[1].contains(param.id)) continue;
            for (const Language language : kLanguages)
                EXPECT_NE(wordsOf(param.id, language)->with.find(box.name), std::string::npos)
                    << param.name << " does not speak of " << box.name;
        }
    }
}

TEST(Words, TheLanguageIsTheOneAskedForElseTheLocales) {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES"}) unsetenv(variable);
    setenv("LANG", "ja_JP.UTF-8", 1);
    EXPECT_EQ(chooseLanguage(""), Language::kJapanese);
    EXPECT_EQ(chooseLanguage("en"), Language::kEnglish);
    setenv("LC_ALL", "C", 1);
    EXPECT_EQ(chooseLanguage(""), Language::kEnglish) << "LC_ALL goes before LANG";
    EXPECT_EQ(chooseLanguage("ja"), Language::kJapanese);
    unsetenv("LC_ALL");
}

TEST_F(WordsTest, EveryLookStaysInTheRangesAndSaysWhatItIs) {
    ASSERT_GE(shippedLooks().size(), 12u);
    for (const Look& look : shippedLooks()) {
        SCOPED_TRACE(look.key);
        for (const Language language : kLanguages) {
            const auto index = static_cast<std::size_t>(language);
            EXPECT_EQ(hasLetterPastAscii(look.name[index]), language == Language::kJapanese);
            EXPECT_EQ(hasLetterPastAscii(look.about[index]), language == Language::kJapanese);
        }
        ASSERT_TRUE(look.size);
        const ParamArguments arguments = argumentsOf(look.key);
        EXPECT_EQ(arguments.warnings(), std::vector<std::string>{});
        // What is not named stays as it is on a frame of any size, so lengths must be named.
        for (const char* name : {"Thickness", "Length", "Density of Lines"})
            EXPECT_NE(look.values.find('"' + std::string(name) + '"'), std::string::npos) << name;
    }
}

// In each format some hundredth of the frame at least, and not all of it.
TEST_F(WordsTest, EveryLookDrawsInEveryFormat) {
    for (const Look& look : shippedLooks()) {
        const ParamArguments arguments = argumentsOf(look.key);
        for (const standin::LayerSize size :
             {standin::LayerSize{960, 540}, {540, 540}, {540, 960}}) {
            const Image picture = draw(arguments, size, 1);
            long drawn = 0;
            for (int y = 0; y < size.height; ++y)
                for (int x = 0; x < size.width; ++x) {
                    const PF_Pixel& pixel = picture.row<PF_Pixel>(y)[x];
                    drawn += std::abs(pixel.red - 128) + std::abs(pixel.green - 128) > 32;
                }
            const double part = static_cast<double>(drawn) / (size.width * size.height);
            EXPECT_GT(part, 0.01) << look.key << " " << size.width << "x" << size.height;
            EXPECT_LT(part, 0.8) << look.key << " " << size.width << "x" << size.height;
        }
    }
}

TEST(Looks, AreFittedBySmallerRatioOfTheSides) {
    const standin::LayerSize made{1920, 1080};
    EXPECT_EQ(fitted(40, Fit::kLength, made, {960, 1080}), 20);
    EXPECT_EQ(fitted(40, Fit::kDensity, made, {960, 1080}), 80);
    EXPECT_EQ(fitted(40, Fit::kShare, made, {3840, 540}), 20);
    EXPECT_EQ(fitted(40, Fit::kStays, made, {96, 54}), 40);
}

// Lines of a look at half the size stand where they stood: the same field, not a thinner one.
TEST_F(WordsTest, AFittedLookIsTheSameFieldSmaller) {
    ParamArguments arguments = argumentsOf("tunnel");
    standin::Instance large = session_.makeInstance({1920, 1080});
    standin::Instance small = session_.makeInstance({960, 540});
    for (standin::Instance* instance : {&large, &small}) storeValues(*instance, arguments, {});
    constexpr A_long kThickness = 11, kDensity = 9, kStart = 2, kTaper = 13;
    EXPECT_EQ(small.value(kThickness).part[0] * 2, large.value(kThickness).part[0]);
    EXPECT_EQ(small.value(kDensity).part[0], large.value(kDensity).part[0] * 2);
    EXPECT_EQ(small.value(kStart).part[1] * 2, large.value(kStart).part[1]);
    EXPECT_EQ(small.value(kTaper), large.value(kTaper));
}

TEST(Looks, AreReadInEveryFormAndWrittenAgain) {
    const Look bare = parseLook("bare", R"({"Thickness": 3})");
    EXPECT_EQ(bare.values, R"({"Thickness": 3})");
    EXPECT_FALSE(bare.size);
    const Look list = parseLook("list", R"([{"name": "Wave", "kind": "group start", "value": ""},
        {"name": "Taper", "default": 0}, {"name": "Length", "default": 500, "value": "20"}])");
    EXPECT_EQ(list.values, R"({"Taper":0,"Length":"20"})");
    for (const Look& look : shippedLooks()) {
        const Look again = parseLook(look.key, lookText(look));
        EXPECT_EQ(again.name, look.name);
        EXPECT_EQ(again.about, look.about);
        EXPECT_EQ(again.values, look.values);
        EXPECT_EQ(again.size->width, look.size->width);
    }
    for (const char* text :
         {"{", "7", R"({"values": {}, "size": [0, 5]})", R"({"values": {}, "size": "big"})",
          R"([1])", R"({"values": {}, "name": 7})"})
        EXPECT_THROW((void)parseLook("bad", text), Failure) << text;
    EXPECT_THROW((void)loadLook("rian"), Failure);
}

TEST_F(WordsTest, VariationsAreReadInEveryForm) {
    const auto valuesOf = [&](const char* text) {
        return parseVariation(ParamLookup(params()), text).values;
    };
    using Texts = std::vector<std::string>;
    EXPECT_EQ(valuesOf("Random Seed=1..4"), Texts({"1", "2", "3", "4"}));
    EXPECT_EQ(valuesOf("Taper=100..0:50"), Texts({"100", "50", "0"}));
    EXPECT_EQ(valuesOf("Wave Amount=-0.2..0.2:0.2").size(), 3u);
    EXPECT_EQ(valuesOf("Thickness=2, 5,12.5"), Texts({"2", "5", "12.5"}));
    EXPECT_EQ(valuesOf("Start Point=10%,50%;90%,20%"), Texts({"10%,50%", "90%,20%"}));
    const Texts seeds = valuesOf("Random Seed=12 throws");
    for (std::size_t i = 0; i < seeds.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_GT(std::abs(std::stoi(seeds[i]) - std::stoi(seeds[j])), 300);
    for (const char* text : {"Taper", "Tapre=1..2", "Taper=1..1000", "Taper=1..x", "Taper=1..9:0",
                             "Taper=3 throws", "Random Seed=0 throws", "Random Seed=x throws"})
        EXPECT_THROW((void)valuesOf(text), Failure) << text;
}

}  // namespace

}  // namespace tool
