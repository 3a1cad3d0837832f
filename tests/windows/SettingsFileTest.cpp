// The settings file through the system's own functions.
#include <cstring>

#include "LoadedCopy.h"
#include "platform/Platform.h"

namespace {

using namespace standin;
using namespace streakfall;
using namespace windows_test;

double defaultOf(const Host& host, const char* name) {
    const ParamInfo* const param = host.param(std::string(name));
    return param != nullptr ? param->defaultValue.part[0] : -1.0;
}

// The folder's name is one that code page 1252 cannot spell.
TEST(SettingsFileTest, IsReadBesideTheModuleWhereverThatLies) {
    const ScratchFolder folder;
    writeFile(folder.file(L"Q_Streakfall.ini"),
              "; mine\n[Version=1.4]\nThickness=33\n[Version=1.5]\nThickness=12.5\n"
              "Random Interval=-7\n");
    const std::filesystem::path copy = copyModule(folder);
    const LoadedFile file(copy);
    Module module(file.entry());
    HostOffer offer;
    offer.modulePath = pathText(copy);
    Host host(module, offer);
    ASSERT_EQ(host.start(), 0);
    EXPECT_EQ(defaultOf(host, "Thickness"), 12.5);
    EXPECT_EQ(defaultOf(host, "Random Interval"), -7);
    EXPECT_EQ(defaultOf(host, "Length"), 500);
    EXPECT_EQ(host.stop(), 0);
}

class DoorTest : public ::testing::Test {
  protected:
    std::string text(const char* key) const {
        char buffer[8];
        const std::size_t length =
            platform::profileString("Version=1.5", key, "none", buffer, path.c_str());
        EXPECT_EQ(std::strlen(buffer), length);
        return buffer;
    }
    std::int32_t integer(const char* key) const {
        return platform::profileInt("Version=1.5", key, 77, path.c_str());
    }
    bool write(const char* key, const char* value) const {
        return platform::writeProfileString("Version=1.5", key, value, path.c_str());
    }

    std::filesystem::path file = std::filesystem::temp_directory_path() /
                                 ("door " + std::to_string(GetCurrentProcessId()) + ".ini");
    std::string path = file.string();  // nothing but ASCII

    void TearDown() override { DeleteFileW(file.c_str()); }
};

TEST_F(DoorTest, ValuesAndFallbacks) {
    EXPECT_EQ(text("H"), "none");
    EXPECT_EQ(integer("H"), 77);
    EXPECT_FALSE(std::filesystem::exists(file)) << "reading makes no file";
    ASSERT_TRUE(write("H", "300"));
    ASSERT_TRUE(write("Taper", "-1.250000"));
    EXPECT_EQ(integer("H"), 300);
    EXPECT_EQ(integer("Taper"), -1);
    EXPECT_EQ(text("Taper"), "-1.2500") << "cut to the buffer";
    EXPECT_EQ(readFile(file), "[Version=1.5]\r\nH=300\r\nTaper=-1.250000\r\n");
    EXPECT_TRUE(platform::deleteFile(path.c_str()));
    EXPECT_FALSE(platform::deleteFile(path.c_str()));
}

// Fewer characters than the buffer holds, of two bytes each in code page 932.
TEST_F(DoorTest, AValueOfTooManyBytesIsCut) {
    ASSERT_TRUE(write("H", "7\x83\x41\x83\x41\x83\x41\x83\x41\x83\x41"));
    EXPECT_EQ(text("H"), "7\x83\x41\x83\x41\x83\x41");
}

TEST_F(DoorTest, OtherSectionsAndUnixLineEndsSurviveAWrite) {
    writeFile(file, "; mine\n[Version=1.4]\nH=1\n[Version=1.5]\nTaper = 2\nH=3\n");
    EXPECT_EQ(integer("H"), 3);
    EXPECT_EQ(text("Taper"), "2");
    ASSERT_TRUE(write("H", "4"));
    EXPECT_EQ(integer("H"), 4);
    EXPECT_EQ(platform::profileInt("Version=1.4", "H", 77, path.c_str()), 1);
    EXPECT_NE(readFile(file).find("; mine"), std::string::npos);
}

TEST_F(DoorTest, WithoutAWindowThereIsNoDialog) {
    int record = 0;  // what a host of another system would have given for its window
    const auto never = [](platform::Window, std::uint32_t, std::uintptr_t,
                          std::intptr_t) -> std::intptr_t { return 0; };
    EXPECT_FALSE(platform::runDialog("", 101, &record, never, nullptr));
}

}  // namespace
