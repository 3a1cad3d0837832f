#include <gtest/gtest.h>
#include <sys/stat.h>

#include <random>
#include <thread>

#include "TemporaryFolder.h"
#include "platform/Platform.h"
#include "platform/PrivateProfile.h"

namespace streakfall::test {
namespace {

using platform::profile::findValue;
using platform::profile::parseInteger;
using platform::profile::withValue;

std::string found(std::string_view text) {
    return std::string(findValue(text, "Version=1.5", "Wave Length").value_or("(absent)"));
}

TEST(PrivateProfile, NamesIgnoreCaseAndBlanksAndTheFirstMatchWins) {
    EXPECT_EQ(found("[Version=1.5]\r\nWave Length=7\r\n"), "7");
    EXPECT_EQ(found("  [ VERSION=1.5 ]\n\twave length \t=  7.5 \t"), "7.5");
    EXPECT_EQ(found("\xEF\xBB\xBF[Version=1.5]\rWave Length=7\r"), "7");
    EXPECT_EQ(found("[Version=1.5]\nWave Length=7\nWave Length=8\n"), "7");
    EXPECT_EQ(found("[Version=1.5]\nWave Length=\n"), "");
    EXPECT_EQ(found("[Version=1.5]\nWave Length=\"7 \"\n"), "7 ");
    EXPECT_EQ(found("[Version=1.5]\nWave Length=7 ; not a comment"), "7 ; not a comment");
}

TEST(PrivateProfile, OtherSectionsAndNamesAreNotTaken) {
    EXPECT_EQ(found(""), "(absent)");
    EXPECT_EQ(found("Wave Length=7\n[Version=1.5]\n"), "(absent)");
    EXPECT_EQ(found("[Version=1.4]\nWave Length=7\n"), "(absent)");
    EXPECT_EQ(found("[Version=1.5]\n[Other]\nWave Length=7\n"), "(absent)");
    EXPECT_EQ(found("[Version=1.5]\n[Other]\n[Version=1.5]\nWave Length=7\n"), "(absent)");
    EXPECT_EQ(found("[Version=1.5]\n;Wave Length=7\nWave Length\nWave Length Random=8"),
              "(absent)");
    EXPECT_EQ(found("[Version=1.5\nWave Length=7"), "(absent)");
}

TEST(PrivateProfile, IntegersAreDecimalModulo32Bits) {
    EXPECT_EQ(parseInteger("12abc"), 12);
    EXPECT_EQ(parseInteger(" -12"), -12);
    EXPECT_EQ(parseInteger("+3.9"), 3);
    EXPECT_EQ(parseInteger("0x10"), 0);
    EXPECT_EQ(parseInteger(""), 0);
    EXPECT_EQ(parseInteger("yes"), 0);
    EXPECT_EQ(parseInteger("2147483648"), INT32_MIN);
    EXPECT_EQ(parseInteger("4294967340"), 44);
    EXPECT_EQ(parseInteger(std::string(100000, '9')), parseInteger("4294967295"));
}

TEST(PrivateProfile, WritingKeepsAllOtherBytes) {
    const auto set = [](std::string_view text) { return withValue(text, "S", "Key", "9"); };
    EXPECT_EQ(set(""), "[S]\r\nKey=9\r\n");
    EXPECT_EQ(set("; top\n[a]\nx=1"), "; top\n[a]\nx=1\r\n[S]\r\nKey=9\r\n");
    EXPECT_EQ(set("[s]\r\n kEY = 1 \r\nKey=2\r\n[a]\r\n"), "[s]\r\n kEY =9\r\nKey=2\r\n[a]\r\n");
    EXPECT_EQ(set("[S]\r\nx=1\r\n; end\r\n\r\n\r\n[a]\r\nKey=2\r\n"),
              "[S]\r\nx=1\r\n; end\r\nKey=9\r\n\r\n\r\n[a]\r\nKey=2\r\n");
    EXPECT_EQ(set("[a]\n[S]"), "[a]\n[S]\r\nKey=9\r\n");
    EXPECT_EQ(set("\xEF\xBB\xBF"), "\xEF\xBB\xBF[S]\r\nKey=9\r\n");
}

// Whatever stands there, a value that was written is read again, twice written is once written,
// and nothing but one line has come in.
TEST(PrivateProfile, AnyTextTakesAValue) {
    std::mt19937 random(20);
    const std::string_view alphabet("[]=;S \"\r\nKey\t\0\x81", 16);
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (std::size_t n = random() % 40; n > 0; --n) text += alphabet[random() % 16];
        const std::string once = withValue(text, "S", "Key", "9");
        ASSERT_EQ(findValue(once, "S", "Key"), "9") << text;
        ASSERT_EQ(withValue(once, "S", "Key", "9"), once) << text;
        if (!findValue(text, "S", "Key")) {
            ASSERT_GT(once.size(), text.size());
            ASSERT_LE(once.size(), text.size() + 14);
        }
    }
}

class ProfileFile : public ::testing::Test {
  protected:
    std::int32_t integer() const { return platform::profileInt("S", "Key", -1, path.c_str()); }
    std::string text(std::span<char> buffer) const {
        platform::profileString("S", "Key", "none", buffer, path.c_str());
        return buffer.data();
    }
    bool write(const char* value) const {
        return platform::writeProfileString("S", "Key", value, path.c_str());
    }

    TemporaryFolder folder;
    std::string path = folder.file("Q.ini");
};

TEST_F(ProfileFile, ValuesAreCutToTheBuffer) {
    char small[5];
    EXPECT_EQ(text(small), "none");
    ASSERT_TRUE(write("123456"));
    EXPECT_EQ(text(small), "1234");
    EXPECT_EQ(platform::profileString("S", "Key", "", {small, 1}, path.c_str()), 0u);
    EXPECT_EQ(integer(), 123456);
    ASSERT_TRUE(write(std::string(100000, '1').c_str()));
    EXPECT_EQ(text(small), "1111");
}

TEST_F(ProfileFile, WhatIsNoSettingsFileIsLeftAlone) {
    const std::string other = "[other]\r\nx=1\r\n";
    writeFile(path, other + std::string(2 << 20, 'x'));
    EXPECT_EQ(integer(), -1);
    EXPECT_FALSE(write("5"));
    EXPECT_EQ(readFile(path).size(), other.size() + (2 << 20));

    writeFile(path, other);
    ::chmod(path.c_str(), 0444);
    EXPECT_FALSE(write("5"));
    EXPECT_FALSE(platform::deleteFile(path.c_str()));
    EXPECT_EQ(readFile(path), other);

    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(integer(), -1);
    EXPECT_FALSE(write("5"));
    EXPECT_FALSE(platform::deleteFile(path.c_str()));
    EXPECT_TRUE(std::filesystem::is_directory(path));

    std::filesystem::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0666), 0);
    EXPECT_EQ(integer(), -1);  // without waiting for a writer
    EXPECT_FALSE(write("5"));

    path = folder.file("absent/Q.ini");
    EXPECT_EQ(integer(), -1);
    EXPECT_FALSE(write("5"));
    EXPECT_FALSE(platform::deleteFile(path.c_str()));
}

TEST_F(ProfileFile, ALinkAndTheFilesRightsStay) {
    const std::string real = folder.file("real.ini");
    writeFile(real, "");
    ::chmod(real.c_str(), 0640);
    std::filesystem::create_symlink(real, path);
    ASSERT_TRUE(write("5"));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(readFile(real), "[S]\r\nKey=5\r\n");
    struct stat status {};
    ASSERT_EQ(::stat(real.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

// A reader beside a writer sees the old file or the new one, never an empty or half one.
TEST_F(ProfileFile, AWriteIsWholeForAnotherThread) {
    const std::string ballast(200000, '7');
    ASSERT_TRUE(platform::writeProfileString("Other", "x", ballast.c_str(), path.c_str()));
    ASSERT_TRUE(write("1"));
    std::jthread writer([&](const std::stop_token& stop) {
        for (int i = 0; !stop.stop_requested(); ++i) EXPECT_TRUE(write(i % 2 != 0 ? "1" : "2"));
    });
    for (int i = 0; i < 300; ++i) {
        const std::int32_t value = integer();
        ASSERT_TRUE(value == 1 || value == 2) << value;
    }
}

}  // namespace
}  // namespace streakfall::test
