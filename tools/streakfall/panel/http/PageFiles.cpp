#include "PageFiles.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "TextFile.h"

namespace tool::panel {

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::array<const char*, 2>, 4> kKinds{
    {{".html", "text/html; charset=utf-8"},
     {".css", "text/css; charset=utf-8"},
     {".js", "text/javascript; charset=utf-8"},
     {".svg", "image/svg+xml"}}};

const char* kindOf(const std::string& name) {
    for (const auto& [ending, kind] : kKinds)
        if (name.ends_with(ending)) return kind;
    return nullptr;
}

}  // namespace

Answer PageFolder::file(std::string name) const {
    if (name.empty()) name = "index.html";
    const char* kind = kindOf(name);
    auto text = kind == nullptr ? std::nullopt : textOf(name);
    if (!text) refuse(Status::kMissing, "there is no such file");
    Answer answer;
    answer.type = kind;
    answer.text = std::move(*text);
    return answer;
}

std::optional<std::string> PageFolder::textOf(const std::string& name) const {
    if (!folder_.empty()) {
        for (const auto& entry : fs::recursive_directory_iterator(folder_))
            if (entry.is_regular_file() &&
                entry.path().lexically_relative(folder_).generic_string() == name)
                return readTextFile("--page-folder", entry.path().string());
        return std::nullopt;
    }
    const auto files = pageFiles();
    const auto found = std::find_if(files.begin(), files.end(),
                                    [&](const PageFile& file) { return file.name == name; });
    if (found == files.end()) return std::nullopt;
    return std::string(found->text);
}

}  // namespace tool::panel
