#include "host/PathText.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace standin {

std::filesystem::path fileAt(const std::string& path) {
    return std::u8string(path.begin(), path.end());
}

std::string pathText(const std::filesystem::path& file) {
    const std::u8string text = file.u8string();
    return {text.begin(), text.end()};
}

std::u16string widePath(const std::string& path) { return fileAt(path).u16string(); }

#ifdef _WIN32

std::string narrowPath(const std::string& path) {
    const std::wstring wide = fileAt(path).wstring();
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
