#pragma once

#include <string>

namespace standin {

// A dynamic library: the one place that knows how the system loads it. It stays loaded until the
// process ends, as with hosts that keep an effect once they have it.
class ModuleLibrary {
  public:
    // A path in UTF-8. Once only. Throws std::runtime_error with the system's words.
    void open(const std::string& path);
    // Null when there is no such symbol.
    void* symbol(const char* name) const;

  private:
    void* handle_ = nullptr;
};

}  // namespace standin
