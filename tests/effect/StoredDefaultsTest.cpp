// The settings file as the options dialog of the module writes it, compared with the one that the
// Windows module writes for the same values through its system's own functions.
#include <filesystem>
#include <fstream>
#include <iterator>

#include "PlayedEffect.h"

namespace {

using namespace played;
using namespace standin;

std::string readFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class StoredDefaultsTest : public EffectTest {};

TEST_F(StoredDefaultsTest, TheFileIsTheOneOfTheWindowsModule) {
    const auto folder = std::filesystem::temp_directory_path() / "streakfall-stored-defaults";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    HostOffer offer;
    offer.modulePath = folder / "Q_Streakfall.so";
    play(offer);
    setAll(golden::frame("07"));
    host().dialog().answer = kStandinDialogFirstButton;
    EXPECT_EQ(instance().openDialog(), 0);
    EXPECT_EQ(readFile(folder / "Q_Streakfall.ini"),
              readFile(STREAKFALL_TEST_DATA "/windows/stored-defaults.ini"));
    std::filesystem::remove_all(folder);
}

}  // namespace
