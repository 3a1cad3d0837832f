// What a host and a user read in the module's file.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <filesystem>
#include <vector>

#include "PropertyListReader.h"
#include "effect/PlayedEffect.h"
#include "host/PathText.h"

namespace {

using namespace standin;

TEST(ModuleFileTest, ThePropertyListSaysWhatGlobalSetupAnnounces) {
    const PropertyList list = PropertyList::ofFile(played::modulePath());
    EXPECT_EQ(list.size(), 12u);
    EXPECT_EQ(list.name("name"), "Q_Streakfall");
    Host host(played::module());
    ASSERT_EQ(host.start(), 0);
    EXPECT_EQ(list.number("eVER"), host.global().version);
    EXPECT_EQ(list.number("eGLO"), static_cast<std::uint32_t>(host.global().outFlags));
    EXPECT_EQ(list.number("eGL2"), static_cast<std::uint32_t>(host.global().outFlags2));
    EXPECT_EQ(host.stop(), 0);
}

TEST(ModuleFileTest, TheEntryPointIsTheOneThePropertyListNames) {
    const PropertyList list = PropertyList::ofFile(played::modulePath());
    const HMODULE module = LoadLibraryW(fileAt(played::modulePath()).c_str());
    ASSERT_NE(module, nullptr);
    EXPECT_NE(GetProcAddress(module, list.text("8664").c_str()), nullptr);
    FreeLibrary(module);
}

// Reads a dialog template's fields, which are aligned to their size and not described by a record.
class TemplateReader {
  public:
    explicit TemplateReader(std::vector<char> bytes) : bytes_(std::move(bytes)) {}

    template <class T>
    T take() {
        T value;
        std::memcpy(&value, &bytes_.at(at_), sizeof value);
        at_ += sizeof value;
        return value;
    }
    // A text, or the number that stands in its place behind a mark.
    std::wstring text() {
        std::wstring result;
        for (wchar_t c = take<wchar_t>(); c != 0; c = take<wchar_t>()) {
            if (c == 0xFFFF) return std::to_wstring(take<std::uint16_t>());
            result += c;
        }
        return result;
    }
    void align() { at_ = (at_ + 3) / 4 * 4; }
    void skip(std::size_t bytes) { at_ += bytes; }

  private:
    std::vector<char> bytes_;
    std::size_t at_ = 0;
};

constexpr int kDialogType = 5;  // RT_DIALOG, of which the headers have the narrow form alone

std::vector<char> resource(const wchar_t* type, int id) {
    const HMODULE module =
        LoadLibraryExW(fileAt(played::modulePath()).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HRSRC place = FindResourceW(module, MAKEINTRESOURCEW(id), type);
    std::vector<char> bytes;
    if (place != nullptr) {
        const auto* first = static_cast<const char*>(LockResource(LoadResource(module, place)));
        bytes.assign(first, first + SizeofResource(module, place));
    }
    FreeLibrary(module);
    return bytes;
}

using Rectangle = std::array<std::int16_t, 4>;  // left, top, width, height in dialog units

Rectangle takeRectangle(TemplateReader& reader) {
    Rectangle rectangle;
    for (std::int16_t& side : rectangle) side = reader.take<std::int16_t>();
    return rectangle;
}

TEST(ModuleFileTest, TheDialogsTemplate) {
    TemplateReader reader(resource(MAKEINTRESOURCEW(kDialogType), 101));
    EXPECT_EQ(reader.take<std::uint16_t>(), 1);
    EXPECT_EQ(reader.take<std::uint16_t>(), 0xFFFF);
    reader.skip(8);  // help id, extended style
    const auto style = reader.take<std::uint32_t>();
    constexpr std::uint32_t kWanted = DS_MODALFRAME | WS_CAPTION | WS_SYSMENU;
    EXPECT_EQ(style & kWanted, kWanted);
    ASSERT_EQ(reader.take<std::uint16_t>(), 3);
    EXPECT_EQ(takeRectangle(reader)[2], 315);
    EXPECT_EQ(reader.text(), L"");  // menu
    EXPECT_EQ(reader.text(), L"");  // class
    EXPECT_EQ(reader.text(), L"option");
    EXPECT_EQ(reader.take<std::uint16_t>(), 8);
    reader.skip(4);  // weight, slope, character set
    EXPECT_EQ(reader.text(), L"MS Shell Dlg");

    const std::pair<std::uint32_t, Rectangle> controls[] = {
        {1015, {7, 6, 301, 70}}, {1010, {66, 30, 209, 14}}, {1012, {66, 48, 209, 14}}};
    for (const auto& [id, rectangle] : controls) {
        reader.align();
        reader.skip(12);  // help id, styles
        EXPECT_EQ(takeRectangle(reader), rectangle);
        EXPECT_EQ(reader.take<std::uint32_t>(), id);
        EXPECT_EQ(reader.text(), L"128");  // the class of buttons
        EXPECT_EQ(reader.text(), L"");
        reader.skip(reader.take<std::uint16_t>());
    }
}

TEST(ModuleFileTest, TheVersionInTheFilesProperties) {
    const std::filesystem::path path = fileAt(played::modulePath());
    DWORD ignored = 0;
    std::vector<char> bytes(GetFileVersionInfoSizeW(path.c_str(), &ignored));
    ASSERT_TRUE(
        GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(bytes.size()), bytes.data()));
    void* found = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueW(bytes.data(), L"\\", &found, &size));
    const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(found);
    EXPECT_EQ(fixed.dwFileVersionMS, 0x00010005u);
    EXPECT_EQ(fixed.dwFileVersionLS, 0x00020003u);
    ASSERT_TRUE(
        VerQueryValueW(bytes.data(), L"\\StringFileInfo\\040904B0\\ProductName", &found, &size));
    EXPECT_STREQ(static_cast<const wchar_t*>(found), L"Q_Streakfall");
}

}  // namespace
