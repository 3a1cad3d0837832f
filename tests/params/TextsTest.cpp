#include <gtest/gtest.h>
#include <iconv.h>

#include <cstdlib>

#include "FakeHost.h"
#include "params/AboutText.h"
#include "params/Texts.h"
#include "platform/Platform.h"

namespace streakfall::test {
namespace {

constexpr std::uint32_t kJP = 0x4A50;

// Sets an environment variable for a scope.
class Environment {
  public:
    Environment(const char* name, const char* value) : name_(name) {
        const char* before = std::getenv(name);
        if (before != nullptr) before_ = before;
        had_ = before != nullptr;
        ::setenv(name, value, 1);
    }
    ~Environment() {
        if (had_) {
            ::setenv(name_, before_.c_str(), 1);
        } else {
            ::unsetenv(name_);
        }
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

  private:
    const char* name_;
    std::string before_;
    bool had_;
};

TEST(Language, TheSwitchStandsBehindABlank) {
    EXPECT_EQ(parseLanguageCode("host.exe -L JP"), kJP);
    EXPECT_EQ(parseLanguageCode("host.exe -ljp"), kJP);
    EXPECT_EQ(parseLanguageCode("host.exe\t-l \t jP next"), kJP);
    EXPECT_EQ(parseLanguageCode("-L JP"), 0u);
    EXPECT_EQ(parseLanguageCode("host.exe--L JP"), 0u);
    EXPECT_EQ(parseLanguageCode("host.exe --L JP"), 0u);
    EXPECT_EQ(parseLanguageCode("host.exe - L JP"), 0u);
    EXPECT_EQ(parseLanguageCode("\"C:\\a -L JP\\host.exe\" x"), 0u);
    EXPECT_EQ(parseLanguageCode("\"C:\\a b\\host.exe\" -L JP"), kJP);
    EXPECT_EQ(parseLanguageCode("host.exe \"open -L JP"), 0u);
}

TEST(Language, TheWordCountsWholeAndTheLastOneWins) {
    EXPECT_EQ(parseLanguageCode("h -L JPN"), 0x4A504Eu);
    EXPECT_EQ(parseLanguageCode("h -L EN -L JP"), kJP);
    EXPECT_EQ(parseLanguageCode("h -L JP -len"), 0x454Eu);
    EXPECT_EQ(parseLanguageCode("h -L JP -L"), 0u);
    EXPECT_EQ(parseLanguageCode("h -L"), 0u);
    EXPECT_EQ(parseLanguageCode("h -L xxxJPJP"), 0x4A504A50u);  // 32 bits hold four letters
    EXPECT_EQ(parseLanguageCode("h -L \xFFJP"), 0xFF4A50u);
    EXPECT_EQ(parseLanguageCode(""), 0u);
}

TEST(Language, TheSwitchGoesBeforeTheCodePage) {
    EXPECT_FALSE(isEnglish(kJP, 1252));
    EXPECT_TRUE(isEnglish(0x4A504E, 932));
    EXPECT_FALSE(isEnglish(0, 932));
    EXPECT_TRUE(isEnglish(0, 1252));
}

TEST(Language, TheLocaleNamesTheCodePage) {
    const Environment all("LC_ALL", "");
    const Environment type("LC_CTYPE", "ja_JP.SJIS");
    const Environment lang("LANG", "de_DE.UTF-8");
    EXPECT_EQ(platform::codePage(), 932u);
    const Environment overruling("LC_ALL", "C");
    EXPECT_NE(platform::codePage(), 932u);
}

// UTF-8 of a text in code page 932.
std::string unicode(std::string text) {
    char result[512] = {};
    char* from = text.data();
    char* to = result;
    std::size_t fromLeft = text.size(), toLeft = sizeof result;
    const iconv_t converter = ::iconv_open("UTF-8", "CP932");
    EXPECT_EQ(::iconv(converter, &from, &fromLeft, &to, &toLeft), 0u);
    ::iconv_close(converter);
    return result;
}

TEST(Texts, BothLanguages) {
    {
        const Environment english("LC_ALL", "C");
        EXPECT_STREQ(lookupText(3), "Settings (Valid from next start-up)");
        EXPECT_STREQ(lookupText(5), "Set current parameter values to default");
        EXPECT_STREQ(lookupText(6), "Restore initial default parameter values");
        EXPECT_STREQ(lookupText(2), "-");
    }
    const std::string rights = lookupText(1);
    const Environment japanese("LC_ALL", "ja_JP.UTF-8");
    EXPECT_EQ(unicode(lookupText(3)),
              "\u8A2D\u5B9A "
              "\uFF08\u6B21\u56DE\u8D77\u52D5\u304B\u3089\u6709\u52B9\u306B\u306A\u308A\u307E\u3059"
              "\uFF09");
    EXPECT_EQ(unicode(lookupText(5)),
              "\u73FE\u5728\u306E\u30D1\u30E9\u30E1\u30FC\u30BF\u8A2D\u5B9A\u3092\u30C7\u30D5\u30A9"
              "\u30EB\u30C8\u5024\u3068\u3057\u3066\u8A18\u61B6\u3059\u308B");
    EXPECT_EQ(unicode(lookupText(6)),
              "\u30D1\u30E9\u30E1\u30FC\u30BF\u306E\u30C7\u30D5\u30A9\u30EB\u30C8\u5024\u8A2D\u5B9A"
              "\u3092\u521D\u671F\u72B6\u614B\u306B\u5FA9\u5E30\u3059\u308B");
    EXPECT_EQ(lookupText(1), rights);
}

TEST(TextsDeathTest, TheProcessesOwnCommandLineCounts) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // a process that has not been asked yet
    EXPECT_EXIT(
        {
            ::setenv("STREAKFALL_COMMAND_LINE", "host -L jp", 1);
            ::setenv("LC_ALL", "C", 1);
            std::exit(useEnglish() ? 1 : 0);
        },
        ::testing::ExitedWithCode(0), "");
    EXPECT_NE(platform::commandLine().find("params_test"), std::string::npos);
}

TEST(About, BothForms) {
    FakeHost host;
    const std::string rights = lookupText(1);
    ASSERT_EQ(about(&host.in, &host.out), PF_Err_NONE);
    EXPECT_EQ(host.out.return_msg, "Q_Streakfall 1.5.2 \r\r" + rights);
    const Environment shift("STREAKFALL_SHIFT", "1");
    ASSERT_EQ(about(&host.in, &host.out), PF_Err_NONE);
    EXPECT_EQ(host.out.return_msg, "Q_Streakfall 1.5.2 Release build:3 \r\r" + rights);
}

}  // namespace
}  // namespace streakfall::test
