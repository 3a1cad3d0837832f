#pragma once

#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

#include "host/ModuleLibrary.h"
#include "hostapi/hostapi.h"

namespace standin {

class Services;

// The module cannot be loaded, or is no effect; the text names the file and the reason.
struct ModuleError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// An effect module, loaded from its file; all that is known of it is its one function. Owner: the
// program; it outlives every host that plays it. Safe from any thread.
class Module {
  public:
    explicit Module(const std::string& path);
    // An entry point of the program's own, for tests with effects that misbehave on purpose.
    explicit Module(PF_EntryPoint ownEntry);

    PF_EntryPoint entry() const { return entry_; }
    // Absolute path of the file; empty for an entry point of the program's own.
    const std::string& path() const { return path_; }

    // An effect builds its process-wide state on the services of its first caller and uses them in
    // commands of other hosts too. They are therefore held here until the effect is set down.
    void called(const std::shared_ptr<Services>& services);
    void setDown();

    // Hosts between global setup and setdown. The effect is set down by the last of them.
    void hostStarted();
    bool hostStopsLast();  // counts the host out; true when none is left

  private:
    ModuleLibrary library_;
    PF_EntryPoint entry_ = nullptr;
    std::string path_;
    std::mutex mutex_;
    std::shared_ptr<Services> firstCaller_;
    int started_ = 0;
};

}  // namespace standin
