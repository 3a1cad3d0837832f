#include "RenderJobs.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "Failure.h"
#include "Guard.h"
#include "Spawn.h"

namespace tool::panel {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kMostAtOnce = 4;

}  // namespace

RenderJob::RenderJob(std::string owner, const std::string& program,
                     const std::vector<std::string>& arguments, int total)
    : owner_(std::move(owner)), total_(total) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        fail(Exit::kEffect, "cannot start a render: {}", std::strerror(errno));
    std::vector<std::string> line{program};
    line.insert(line.end(), arguments.begin(), arguments.end());
    // A core is left to the page.
    const unsigned cores = std::max(2u, std::thread::hardware_concurrency());
    line.insert(line.end(), {"--progress", "json", "-j", std::to_string(cores - 1)});
    try {
        process_ = spawn(line, ends[1]);
        close(ends[1]);
    } catch (...) {
        close(ends[0]);
        close(ends[1]);
        throw;
    }
    listener_ = std::thread([this, words = ends[0]] { listen(words); });
}

RenderJob::~RenderJob() {
    stop();
    listener_.join();
}

void RenderJob::stop() {
    const std::lock_guard lock(mutex_);
    if (done_ || stopped_) return;
    stopped_ = true;
    kill(process_, SIGTERM);
}

bool RenderJob::isDone() const {
    const std::lock_guard lock(mutex_);
    return done_;
}

Json RenderJob::toJson() const {
    const std::lock_guard lock(mutex_);
    const std::chrono::duration<double> running = Clock::now() - begun_;
    return {{"written", written_}, {"total", total_},
            {"failed", failed_},   {"done", done_},
            {"stopped", stopped_}, {"seconds", done_ ? seconds_ : running.count()},
            {"message", message_}};
}

void RenderJob::listen(int words) {
    std::string held;
    char buffer[4096];
    for (;;) {
        const ssize_t count = read(words, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        held.append(buffer, static_cast<std::size_t>(count));
        for (auto end = held.find('\n'); end != std::string::npos; end = held.find('\n')) {
            take(held.substr(0, end));
            held.erase(0, end + 1);
        }
    }
    close(words);
    // Its number is the system's again only once it was waited for, which no stop may come behind.
    siginfo_t ignored;
    while (waitid(P_PID, static_cast<id_t>(process_), &ignored, WEXITED | WNOWAIT) < 0 &&
           errno == EINTR) {
    }
    const std::lock_guard lock(mutex_);
    int status = 0;
    waitpid(process_, &status, 0);
    finish(status);
}

// A JSON object a line, or the one line of a program that cannot begin.
void RenderJob::take(const std::string& line) {
    const Json said = Json::parse(line, nullptr, false);
    const std::lock_guard lock(mutex_);
    if (!said.is_object()) {
        message_ = line;
        return;
    }
    const std::string event = said.value("event", "");
    const std::string outcome = event == "frame" ? said.value("outcome", "") : "";
    if (outcome == "written") ++written_;
    if (outcome != "failed") return;
    ++failed_;
    message_ = said.value("trouble", "");
}

void RenderJob::finish(int status) {
    done_ = true;
    seconds_ = std::chrono::duration<double>(Clock::now() - begun_).count();
    if (WIFSIGNALED(status) && message_.empty())
        message_ = fmt::format("ended by signal {}", WTERMSIG(status));
}

std::string RenderJobs::start(const std::string& owner, const std::vector<std::string>& arguments,
                              int total) {
    const std::lock_guard lock(mutex_);
    int running = 0;
    for (const Named& named : jobs_) {
        if (named.job->isDone()) continue;
        ++running;
        if (named.job->owner() == owner)
            refuse(Status::kConflict, "a render of this page still runs; stop it first");
    }
    if (running >= kMostAtOnce) refuse(Status::kConflict, "{} renders run already", running);
    Named named{randomName(), std::make_shared<RenderJob>(owner, program_, arguments, total)};
    jobs_.push_back(named);
    for (auto at = jobs_.begin(); jobs_.size() > kMostKept && at != jobs_.end();)
        at = at->job->isDone() ? jobs_.erase(at) : std::next(at);
    return named.name;
}

std::shared_ptr<RenderJob> RenderJobs::find(const std::string& name) const {
    const std::lock_guard lock(mutex_);
    for (const Named& named : jobs_)
        if (named.name == name) return named.job;
    refuse(Status::kMissing, "there is no such render");
}

bool RenderJobs::rest() const {
    const std::lock_guard lock(mutex_);
    return std::all_of(jobs_.begin(), jobs_.end(),
                       [](const Named& named) { return named.job->isDone(); });
}

void RenderJobs::stopAll() {
    const std::lock_guard lock(mutex_);
    for (const Named& named : jobs_) named.job->stop();
}

}  // namespace tool::panel
