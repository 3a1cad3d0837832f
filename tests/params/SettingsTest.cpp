#include <gtest/gtest.h>

#include <clocale>
#include <random>

#include "FakeHost.h"
#include "SystemsPath.h"
#include "TemporaryFolder.h"
#include "params/OptionsDialog.h"
#include "params/Settings.h"
#include "platform/Platform.h"

namespace streakfall::test {
namespace {

constexpr char kSection[] = "[Version=1.5]\r\n";

// What opens when the settings file is as given.
class Settings : public ::testing::Test {
  protected:
    // A host with an instance that has just been set up.
    struct Opened : FakeHost {
        explicit Opened(const std::string& module) : table(*this) {
            modulePath = module;
            EXPECT_EQ(paramsSetup(&in, &out), PF_Err_NONE);
        }
        double number(std::int32_t id) { return param(id).u.fs_d.value; }
        std::int32_t integer(std::int32_t id) { return param(id).u.sd.value; }
        Table table;
    };

    Opened open() const { return Opened(folder.file("Q_Streakfall.so")); }
    Opened openWith(const std::string& text) const {
        writeFile(file, text);
        return open();
    }

    // Every value as it opens without a file.
    static void expectBuiltIn(Opened& host) {
        EXPECT_EQ(host.number(11), 5);
        EXPECT_EQ(host.number(45), 500);
        EXPECT_EQ(host.number(53), 0);
        EXPECT_EQ(host.number(54), 50);
        EXPECT_EQ(host.integer(23), 0);
        EXPECT_EQ(host.param(69).u.bd.value, 1);
        EXPECT_EQ(host.param(5).u.cd.value.red, 0);
        EXPECT_EQ(host.param(57).u.ad.value, 0);
        EXPECT_EQ(host.param(3).u.td.x_value, 70 << 16);
    }

    TemporaryFolder folder;
    std::string file = folder.file("Q_Streakfall.ini");
};

TEST_F(Settings, PathIsTheModulesWithAnotherExtension) {
    FakeHost host;
    const auto path = [&](const char* module) {
        host.modulePath = module;
        return settingsPath(&host.in);
    };
    EXPECT_EQ(path("/a/Q_Streakfall.so"), "/a/Q_Streakfall.ini");
    EXPECT_EQ(path("C:\\b.c\\Q.v2.aex"), "C:\\b.c\\Q.v2.ini");
    EXPECT_EQ(path("C:\\b.c\\Q"), "C:\\b.c\\Q.ini");
    EXPECT_EQ(path("Q"), "Q.ini");
    EXPECT_EQ(path(""), path(platform::ownModulePath().c_str()));
    const SystemsPath unknown("");
    EXPECT_EQ(path(""), "");
    EXPECT_EQ(path(std::string(259, 'x').c_str()), std::string(259, 'x') + ".ini");
}

// What was filled in counts.
TEST_F(Settings, APathBesideACodeIsOne) {
    FakeHost host;
    host.modulePath = "/a/Q_Streakfall.so";
    host.pathCode = PF_Err_INVALID_CALLBACK;
    EXPECT_EQ(settingsPath(&host.in), "/a/Q_Streakfall.ini");
}

TEST_F(Settings, WithoutAFileAllIsBuiltIn) {
    Opened host = open();
    expectBuiltIn(host);
    EXPECT_FALSE(std::filesystem::exists(file)) << "reading makes no file";
}

TEST_F(Settings, AHostThatNamesNoFileGetsTheBuiltInDefaults) {
    const SystemsPath unknown("");
    Opened host("");
    expectBuiltIn(host);
}

TEST_F(Settings, StoredValuesReachTheHostUnlimited) {
    Opened host = openWith(std::string(kSection) +
                           "Opacity=150\r\nThickness = 0.1\r\nRandom Seed=-7\r\nTaper=12.5\r\n"
                           "H=90.5\r\nColor.r=300\r\nColor.g=-1\r\nColor.a=3\r\n"
                           "Enable Wave=257\r\nRepeat=255\r\n");
    EXPECT_EQ(host.number(6), 150);
    EXPECT_EQ(host.param(6).u.fs_d.dephault, 150);
    EXPECT_EQ(host.number(11), static_cast<double>(0.1F));
    EXPECT_EQ(host.integer(24), -7);
    EXPECT_EQ(host.param(24).u.sd.dephault, -7);
    EXPECT_EQ(host.number(13), 12.5);
    EXPECT_EQ(host.param(57).u.ad.value, 90 * 65536 + 32768);
    EXPECT_EQ(host.param(5).u.cd.value.red, 44);
    EXPECT_EQ(host.param(5).u.cd.dephault.green, 255);
    EXPECT_EQ(host.param(5).u.cd.value.alpha, 255);
    EXPECT_EQ(host.param(62).u.bd.value, 1);
    EXPECT_EQ(host.param(18).u.bd.value, -1);
    EXPECT_EQ(host.number(45), 500);
}

TEST_F(Settings, NumbersBeyondTheirTypesAreDefined) {
    Opened host = openWith(std::string(kSection) +
                           "Thickness=1e300\nLength=-1e999\nH=1e300\nRandom Interval=99999999999\n"
                           "Offset=nan\nAuto Offset=inf\nColor.b=4294967297\nTaper=\n");
    EXPECT_EQ(host.param(11).u.fs_d.dephault, std::numeric_limits<float>::max());
    EXPECT_EQ(host.param(45).u.fs_d.dephault, std::numeric_limits<float>::lowest());
    EXPECT_EQ(host.param(57).u.ad.value, INT32_MAX);
    EXPECT_EQ(host.integer(23), 1215752191);  // modulo 2^32
    EXPECT_EQ(host.number(21), 0);
    EXPECT_EQ(host.number(33), 0);
    EXPECT_EQ(host.param(5).u.cd.value.blue, 1);
    EXPECT_EQ(host.number(13), 0);
}

TEST_F(Settings, AnotherVersionsSectionIsNotRead) {
    Opened host = openWith("[Version=1.4]\r\nThickness=33\r\nRandom Interval=4\r\n");
    expectBuiltIn(host);
}

TEST_F(Settings, WhatIsNoSettingsFileGivesTheBuiltInDefaults) {
    std::mt19937 random(7);
    std::string noise(5000, '\0');
    for (char& c : noise) c = static_cast<char>(random());
    std::string zeros(3000, '\0');
    for (const std::string& text :
         {std::string(), noise, zeros, std::string(300000, '='), std::string(300000, '['),
          std::string("[Version=1.5]"), std::string("\r\r\r\n\n[Version=1.5]=\n=\n==1\n")}) {
        Opened host = openWith(text);
        expectBuiltIn(host);
    }
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    Opened host = open();
    expectBuiltIn(host);
}

TEST_F(Settings, AnOldHostUsesNothingOfTheFile) {
    writeFile(file, std::string(kSection) + "Thickness=33\r\n");
    FakeHost host;
    const Table table(host);
    host.in.version = {12, 11};
    host.modulePath = folder.file("Q_Streakfall.so");
    ASSERT_EQ(paramsSetup(&host.in, &host.out), PF_Err_NONE);
    EXPECT_EQ(host.param(11).u.fs_d.value, 5);
    EXPECT_STREQ(settingsSection.load(), "");

    host.answer = kStandinDialogSecondButton;  // is greyed
    DoDialog(&host.in, host.params());
    EXPECT_EQ(host.window.firstButton.enabled, 0);
    EXPECT_EQ(host.window.secondButton.enabled, 0);
    EXPECT_EQ(host.window.groupBox.enabled, 1);
    EXPECT_EQ(readFile(file), std::string(kSection) + "Thickness=33\r\n");
}

// All 51 keys, in host order.
constexpr const char* kKeys[] = {"Link End Point",
                                 "Opacity",
                                 "Color.r",
                                 "Color.g",
                                 "Color.b",
                                 "Color.a",
                                 "H",
                                 "S",
                                 "V",
                                 "Thickness",
                                 "Thickness Random",
                                 "Offset Random",
                                 "Length",
                                 "Length Random",
                                 "Density of Lines",
                                 "Density Random",
                                 "Random Interval",
                                 "Random Array",
                                 "Random Seed",
                                 "Clear Background",
                                 "Enable In/Out",
                                 "Start Thickness",
                                 "Start Length",
                                 "End Thickness",
                                 "End Length",
                                 "Use Start/End Opacity",
                                 "Start Opacity",
                                 "End Opacity",
                                 "Opacity Center Position",
                                 "Group Lines",
                                 "Lines Random",
                                 "Attraction",
                                 "Interval Random",
                                 "Group Offset Random",
                                 "Offset",
                                 "Auto Offset",
                                 "Repeat",
                                 "Repeat Interval",
                                 "Random Repeat Num",
                                 "Enable Taper",
                                 "Taper",
                                 "Base Length",
                                 "Arch Rate",
                                 "Fix Band Form",
                                 "Enable Wave",
                                 "Wave Amount",
                                 "Wave Length",
                                 "Wave Phase",
                                 "Wave Amount Random",
                                 "Wave Length Random",
                                 "Wave Phase Random"};

std::vector<std::string> keysOf(const std::string& text) {
    std::vector<std::string> keys;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find("\r\n", at);
        const std::string line = text.substr(at, end - at);
        if (line.front() != '[') keys.push_back(line.substr(0, line.find('=')));
        at = end + 2;
    }
    return keys;
}

// Gives every parameter a value of its own and takes it over as the default.
void storeOddValues(FakeHost& host) {
    for (std::size_t i = 1; i <= kParamCount; ++i) {
        PF_ParamDef& def = *host.params()[i];
        const auto n = static_cast<std::int32_t>(i);
        switch (def.param_type) {
            case PF_Param_FLOAT_SLIDER:
                def.u.fs_d.value = n * -1.25;
                break;
            case PF_Param_SLIDER:
                def.u.sd.value = -n;
                break;
            case PF_Param_CHECKBOX:
                def.u.bd.value = 1 - def.u.bd.value;
                break;
            case PF_Param_ANGLE:
                def.u.ad.value = n * 65536 / 4;
                break;
            case PF_Param_COLOR:
                def.u.cd.value = {1, 2, 3, 4};
                break;
            case PF_Param_POINT:
                def.u.td.x_value = 1;
                break;
            default:
                break;
        }
    }
    host.answer = kStandinDialogFirstButton;
    DoDialog(&host.in, host.params());
}

void expectOddValuesAgain(FakeHost& host, FakeHost& before) {
    for (std::size_t i = 1; i <= kParamCount; ++i) {
        const PF_ParamDef& def = *host.params()[i];
        const PF_ParamDef& was = *before.params()[i];
        switch (def.param_type) {
            case PF_Param_FLOAT_SLIDER:
                EXPECT_EQ(def.u.fs_d.value, was.u.fs_d.value) << i;
                break;
            case PF_Param_SLIDER:
                EXPECT_EQ(def.u.sd.value, was.u.sd.value) << i;
                break;
            case PF_Param_CHECKBOX:
                EXPECT_EQ(def.u.bd.value, was.u.bd.value) << i;
                break;
            case PF_Param_ANGLE:
                EXPECT_EQ(def.u.ad.value, was.u.ad.value) << i;
                break;
            case PF_Param_COLOR:
                EXPECT_EQ(def.u.cd.value.green, was.u.cd.value.green) << i;
                break;
            case PF_Param_POINT:
                EXPECT_NE(def.u.td.x_value, 1) << "points are not stored";
                break;
            default:
                break;
        }
    }
}

TEST_F(Settings, StoredValuesAreTheNextInstancesDefaults) {
    Opened first = open();
    storeOddValues(first);
    const std::string text = readFile(file);
    EXPECT_EQ(text.substr(0, 15), kSection);
    EXPECT_EQ(keysOf(text), std::vector<std::string>(std::begin(kKeys), std::end(kKeys)));
    EXPECT_NE(text.find("\r\nThickness=-13.750000\r\n"), text.npos);
    EXPECT_NE(text.find("\r\nH=1.750000\r\n"), text.npos);
    EXPECT_NE(text.find("\r\nColor.a=1\r\n"), text.npos);
    {
        FakeHost second;  // in the same process, the table still stands
        second.modulePath = first.modulePath;
        ASSERT_EQ(paramsSetup(&second.in, &second.out), PF_Err_NONE);
        expectOddValuesAgain(second, first);
    }
}

TEST_F(Settings, OtherSectionsSurviveAndARestoreTakesTheWholeFile) {
    const std::string other = "; mine\r\n[Version=1.4]\r\nThickness=33\r\n\r\n";
    Opened host = openWith(other);
    storeOddValues(host);
    const std::string text = readFile(file);
    EXPECT_EQ(text.substr(0, other.size()), other);
    EXPECT_EQ(text.substr(other.size(), 15), kSection);

    host.answer = kStandinDialogClose;
    DoDialog(&host.in, host.params());
    EXPECT_EQ(readFile(file), text);
    host.answer = kStandinDialogSecondButton;
    DoDialog(&host.in, host.params());
    EXPECT_FALSE(std::filesystem::exists(file));
    DoDialog(&host.in, host.params());
}

// A locale with a decimal comma for the process, made on the spot where none is installed.
class CommaLocale {
  public:
    explicit CommaLocale(const TemporaryFolder& folder) {
        if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) {
            const std::string made = folder.file("de_DE.UTF-8");
            if (std::system(("localedef -i de_DE -f UTF-8 " + made + " 2>/dev/null").c_str()) ==
                0) {
                ::setenv("LOCPATH", folder.file("").c_str(), 1);
                std::setlocale(LC_ALL, "de_DE.UTF-8");
                ::unsetenv("LOCPATH");
            }
        }
    }
    ~CommaLocale() { std::setlocale(LC_ALL, "C"); }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    explicit operator bool() const { return *std::localeconv()->decimal_point == ','; }
};

TEST_F(Settings, ADecimalCommaOfTheHostSpoilsNothing) {
    const TemporaryFolder locales;
    const CommaLocale comma(locales);
    if (!comma) GTEST_SKIP() << "no locale with a decimal comma can be had";
    Opened first = open();
    storeOddValues(first);
    EXPECT_NE(readFile(file).find("Thickness=-13.750000"), std::string::npos);
    {
        FakeHost second;
        second.modulePath = first.modulePath;
        ASSERT_EQ(paramsSetup(&second.in, &second.out), PF_Err_NONE);
        expectOddValuesAgain(second, first);
    }
}

}  // namespace
}  // namespace streakfall::test
