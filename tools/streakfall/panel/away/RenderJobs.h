// Renders into files that pages started: each is this program again, by the very line that a page
// copies, so that it draws, names and replaces files as from a shell, and ends without a half file.
// Safe from any thread.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "Exchange.h"

namespace tool::panel {

class RenderJob {
  public:
    // `owner` is the page's name, `program` the file to run. Throws Failure.
    RenderJob(std::string owner, const std::string& program,
              const std::vector<std::string>& arguments, int total);
    // Stops it.
    ~RenderJob();
    RenderJob(const RenderJob&) = delete;
    RenderJob& operator=(const RenderJob&) = delete;

    void stop();
    [[nodiscard]] bool isDone() const;
    [[nodiscard]] const std::string& owner() const { return owner_; }
    // {written, total, failed, done, stopped, seconds, message}
    [[nodiscard]] Json toJson() const;

  private:
    void listen(int words);
    void take(const std::string& line);
    void finish(int status);

    std::string owner_;
    int total_;
    std::chrono::steady_clock::time_point begun_ = std::chrono::steady_clock::now();

    mutable std::mutex mutex_;  // of what follows
    pid_t process_ = -1;
    int written_ = 0, failed_ = 0;
    bool done_ = false, stopped_ = false;
    double seconds_ = 0;
    std::string message_;

    std::thread listener_;  // on what the process says, until it ends
};

class RenderJobs {
  public:
    explicit RenderJobs(std::string program) : program_(std::move(program)) {}

    // Returns its name. Throws Refusal while the owner has another that runs, or when too many run;
    // Failure.
    std::string start(const std::string& owner, const std::vector<std::string>& arguments,
                      int total);
    // Throws Refusal.
    [[nodiscard]] std::shared_ptr<RenderJob> find(const std::string& name) const;
    void stopAll();
    [[nodiscard]] bool rest() const;

  private:
    struct Named {
        std::string name;
        std::shared_ptr<RenderJob> job;
    };
    static constexpr std::size_t kMostKept = 16;

    std::string program_;
    mutable std::mutex mutex_;
    std::list<Named> jobs_;  // the oldest in front
};

}  // namespace tool::panel
