#include "host/PathText.h"

#include <filesystem>

#ifdef _WIN32
#include <windows.h>
#endif

namespace standin {

std::u16string widePath(const std::string& path) { return std::filesystem::path(path).u16string(); }

#ifdef _WIN32

std::string narrowPath(const std::string& path) {
    const std::wstring wide = std::filesystem::path(path).wstring();
    const int length = static_cast<int>(wide.size());
    std::string narrow(2 * wide.size(), '\0');  // at most two bytes a character
    const int used =
        WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), length, narrow.data(),
                            static_cast<int>(narrow.size()), "?", nullptr);
    narrow.resize(static_cast<std::size_t>(used));
    return narrow;
}

#else

std::string narrowPath(const std::string& path) { return path; }

#endif

}  // namespace standin
