#pragma once

#include <filesystem>
#include <string>

namespace standin {

// The stand-in's own paths are UTF-8 on every system.
std::filesystem::path fileAt(const std::string& path);
std::string pathText(const std::filesystem::path& file);

// The forms in which a host tells them to an effect: in the process's narrow code page, with "?"
// for a character that it lacks, and wide.
std::string narrowPath(const std::string& path);
std::u16string widePath(const std::string& path);

}  // namespace standin
