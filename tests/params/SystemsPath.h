#pragma once

#include <cstdlib>

namespace streakfall::test {

// What the system answers for the module's path as long as this lives; off Windows.
class SystemsPath {
  public:
    explicit SystemsPath(const char* path) { setenv("STREAKFALL_OWN_PATH", path, 1); }
    ~SystemsPath() { unsetenv("STREAKFALL_OWN_PATH"); }
    SystemsPath(const SystemsPath&) = delete;
    SystemsPath& operator=(const SystemsPath&) = delete;
};

}  // namespace streakfall::test
