// The temporary files that this process has open, where a signal handler can find them: a table of
// fixed size without locks. A file for which there is no room is not in it, and stays behind when
// the process ends at once.
#pragma once

#include <string>

namespace tool {

class OpenTemporary {
  public:
    explicit OpenTemporary(const std::string& path);
    ~OpenTemporary();
    OpenTemporary(const OpenTemporary&) = delete;
    OpenTemporary& operator=(const OpenTemporary&) = delete;

    // Removes all of them. May be called in a signal handler, before the process ends.
    static void dropAll() noexcept;

  private:
    int slot_ = -1;
};

}  // namespace tool
