// Copies of the module in folders of their own, loaded and unloaded like a host would.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "effect/PlayedEffect.h"
#include "host/PathText.h"
#include "hostapi/hostapi.h"

namespace windows_test {

// A folder with a blank and Japanese characters in its name, gone at the end of its life.
class ScratchFolder {
  public:
    ScratchFolder()
        : path_(std::filesystem::temp_directory_path() /
                (L"streakfall \u8A2D\u5B9A " + std::to_wstring(GetCurrentProcessId()))) {
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~ScratchFolder() {
        std::error_code ignored;  // of a test that failed with a file still open
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::filesystem::path file(const wchar_t* name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

inline void writeFile(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string readFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Copies the module under test.
inline std::filesystem::path copyModule(const ScratchFolder& folder) {
    const std::filesystem::path copy = folder.file(L"Q_Streakfall.aex");
    std::filesystem::copy_file(standin::fileAt(played::modulePath()), copy);
    return copy;
}

// A module file, loaded as long as this lives.
class LoadedFile {
  public:
    explicit LoadedFile(const std::filesystem::path& path) : handle_(LoadLibraryW(path.c_str())) {
        EXPECT_NE(handle_, nullptr) << "system error " << GetLastError();
    }
    ~LoadedFile() { FreeLibrary(handle_); }
    LoadedFile(const LoadedFile&) = delete;
    LoadedFile& operator=(const LoadedFile&) = delete;

    PF_EntryPoint entry() const {
        return reinterpret_cast<PF_EntryPoint>(
            reinterpret_cast<void*>(GetProcAddress(handle_, "EntryPointFunc")));
    }

  private:
    HMODULE handle_;
};

}  // namespace windows_test
