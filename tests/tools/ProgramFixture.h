// The program as a process, for tests that judge it by its exit code, by what it says and by the
// files that it leaves.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <vector>

#include "PictureReader.h"
#include "PictureWriter.h"
#include "host/Image.h"

namespace tool {

namespace fs = std::filesystem;

using standin::Depth;
using standin::Image;

inline std::string contentOf(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

struct Outcome {
    int code;
    std::string out;
    std::string error;
};

// Each test works in a folder of its own, with the program's module copied into it, since saved
// defaults go beside the module.
class ProgramTest : public testing::Test {
  protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() /
                  ("streakfall-program-" + std::to_string(getpid()) + "-" +
                   testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::create_directories(folder_);
        fs::copy_file(STREAKFALL_MODULE, folder_ / "effect.so");
    }
    void TearDown() override { fs::remove_all(folder_); }

    // A shell line in the test's folder; $P is the program.
    Outcome shell(const std::string& line) const {
        const std::string command = "cd '" + folder_.string() +
                                    "' && P='" STREAKFALL_PROGRAM "' && { " + line +
                                    "\n} >out.txt 2>error.txt </dev/null";
        const int status = std::system(command.c_str());
        Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, content("out.txt"),
                        content("error.txt")};
        fs::remove(folder_ / "out.txt");
        fs::remove(folder_ / "error.txt");
        return outcome;
    }
    Outcome run(const std::string& arguments) const {
        return shell("\"$P\" " + arguments + " --module effect.so");
    }
    Outcome render(const std::string& arguments) const { return run("render " + arguments); }

    std::string path(const std::string& name) const { return (folder_ / name).string(); }
    std::string content(const std::string& name) const { return contentOf(folder_ / name); }
    // The names in the folder, the module aside.
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_))
            if (entry.path().filename() != "effect.so")
                names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    // With a matte: opaque on the left, clear on the right.
    void makePicture(const std::string& name, int width = 64, int height = 48) const {
        Image image = Image::filled(width, height, Depth::bits8, 1, 0.5, 0.75, 1);
        for (int y = 0; y < height; ++y)
            for (int x = width / 2; x < width; ++x) image.row<PF_Pixel>(y)[x].alpha = 0;
        writePicture(path(name), image);
    }
    // One line that says the same as the code, and names the thing.
    static void expectFailure(const Outcome& outcome, int code, const std::string& thing) {
        EXPECT_EQ(outcome.code, code) << outcome.error;
        EXPECT_EQ(std::count(outcome.error.begin(), outcome.error.end(), '\n'), 1) << outcome.error;
        EXPECT_EQ(outcome.error.rfind("streakfall: ", 0), 0u) << outcome.error;
        EXPECT_NE(outcome.error.find(thing), std::string::npos) << outcome.error;
    }

    // Whether all the words stand in the text.
    static void expectWords(const std::string& text, std::initializer_list<const char*> words) {
        for (const char* word : words)
            EXPECT_NE(text.find(word), std::string::npos) << "\"" << word << "\" in:\n" << text;
    }

    fs::path folder_;
};

inline constexpr char kDense[] = " --set 'Density of Lines=200' --set 'Start Point=0,0' ";

}  // namespace tool
