#pragma once

#include <string>

namespace standin {

// The stand-in's own paths are UTF-8 on every system. These are the forms in which a host tells
// them to an effect.

// In the process's narrow code page; "?" stands for a character that it lacks.
std::string narrowPath(const std::string& path);
std::u16string widePath(const std::string& path);

}  // namespace standin
