#include <gtest/gtest.h>

#include "FakeHost.h"
#include "SystemsPath.h"
#include "TemporaryFolder.h"
#include "params/OptionsDialog.h"
#include "params/Texts.h"

namespace streakfall::test {
namespace {

class Dialog : public ::testing::Test {
  protected:
    Dialog() : table(host) {
        host.modulePath = folder.file("Q_Streakfall.so");
        EXPECT_EQ(paramsSetup(&host.in, &host.out), PF_Err_NONE);
    }
    bool storedAfter(A_long answer) {
        host.answer = answer;
        DoDialog(&host.in, host.params());
        return std::filesystem::remove(folder.file("Q_Streakfall.ini"));
    }

    TemporaryFolder folder;
    FakeHost host;
    Table table;
};

TEST_F(Dialog, ShowsItsTextsAndLiveButtons) {
    EXPECT_FALSE(storedAfter(kStandinDialogClose));
    EXPECT_STREQ(host.window.title, "option");
    EXPECT_STREQ(host.window.groupBox.text, lookupText(kTextSettings));
    EXPECT_STREQ(host.window.firstButton.text, lookupText(kTextStoreDefaults));
    EXPECT_STREQ(host.window.secondButton.text, lookupText(kTextRestoreDefaults));
    EXPECT_EQ(host.window.firstButton.enabled, 1);
    EXPECT_EQ(host.window.secondButton.enabled, 1);
}

TEST_F(Dialog, OnlyTheFirstButtonStores) {
    EXPECT_TRUE(storedAfter(kStandinDialogFirstButton));
    const A_long others[] = {
        kStandinDialogSecondButton, kStandinDialogClose, kStandinDialogGroupBox, 0, -1, 0x103F2};
    for (const A_long answer : others) {
        EXPECT_FALSE(storedAfter(answer)) << answer;
    }
}

TEST_F(Dialog, WithoutAWindowOrAFileNothingHappens) {
    host.window.magic = 0;
    EXPECT_FALSE(storedAfter(kStandinDialogFirstButton));
    host.window.magic = kStandinDialogMagic;
    host.modulePath = folder.file("absent/Q_Streakfall.so");
    EXPECT_FALSE(storedAfter(kStandinDialogFirstButton));
}

TEST_F(Dialog, WithoutAPathItCanOnlyBeClosed) {
    const SystemsPath unknown("");
    host.modulePath.clear();
    EXPECT_FALSE(storedAfter(kStandinDialogFirstButton));
    EXPECT_EQ(host.window.firstButton.enabled, 0);
    EXPECT_EQ(host.window.secondButton.enabled, 0);
}

TEST_F(Dialog, StoresBesideTheModuleThatTheSystemNames) {
    const SystemsPath named(host.modulePath.c_str());
    host.modulePath.clear();
    EXPECT_TRUE(storedAfter(kStandinDialogFirstButton));
}

}  // namespace
}  // namespace streakfall::test
