#include "validate/Runner.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "validate/Report.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

#ifdef __SANITIZE_THREAD__
// A race ends the process at once: what it would say at its end is lost with the exit handlers.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_options() {
    return "halt_on_error=1";
}
#endif

namespace validate {
namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Without the exit handlers: those of libraries in the calling program wait for threads that did
// not come along. A leak detector is among them, and gets its turn here.
[[noreturn]] void runHere(const Check& check, const Subject& subject, int pipe) {
    Report report(pipe);
    try {
        try {
            check.run(subject, report);
        } catch (const EndOfCheck&) {
        } catch (const std::exception& error) {
            report.finding(text("ended by an exception: ", error.what()));
        }
    } catch (const EndOfCheck&) {
    }
    report.done();
#ifdef __SANITIZE_ADDRESS__
    __lsan_do_leak_check();
#endif
    _exit(EXIT_SUCCESS);
}

// What comes out of the pipe, line by line.
class Reading {
  public:
    void take(const char* bytes, std::size_t count) {
        for (; count > 0; ++bytes, --count) {
            if (*bytes != '\n') {
                line_ += *bytes;
            } else {
                takeLine();
                line_.clear();
            }
        }
    }

    CheckResult result;
    std::string place;
    bool done = false;

  private:
    void takeLine() {
        if (line_.empty()) return;
        const std::string rest = line_.substr(1);
        switch (line_[0]) {
            case kPlaceLine:
                place = rest;
                break;
            case kFindingLine:
                result.findings.push_back(rest);
                break;
            case kNoteLine:
                result.notes.push_back(rest);
                break;
            case kDoneLine:
                done = true;
                break;
            default:
                break;
        }
    }

    std::string line_;
};

// Reads until the pipe's other end closes; false when the time is over before.
bool readAll(int pipe, Clock::time_point start, double limit, Reading& reading) {
    for (;;) {
        const double left = limit - secondsSince(start);
        if (left <= 0) return false;
        pollfd waited{pipe, POLLIN, 0};
        const int ready = poll(&waited, 1, static_cast<int>(left * 1000) + 1);
        if (ready == 0 || (ready < 0 && errno == EINTR)) continue;
        char bytes[4096];
        const ssize_t count = read(pipe, bytes, sizeof bytes);
        if (count <= 0) return true;
        reading.take(bytes, static_cast<std::size_t>(count));
    }
}

std::string ending(int status, bool done) {
    if (WIFSIGNALED(status)) {
        const int number = WTERMSIG(status);
        return text("crashed with signal ", number, " (", strsignal(number), ")");
    }
    if (WEXITSTATUS(status) != 0) {
        return text("its process ended with code ", WEXITSTATUS(status));
    }
    return done ? std::string() : "the module ended the process";
}

void addEnding(Reading& reading, const std::string& how) {
    if (how.empty()) return;
    reading.result.findings.push_back(reading.place.empty() ? how : reading.place + ": " + how);
}

}  // namespace

CheckResult runCheck(const Check& check, const Subject& subject) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe for a check");
    // Else what is buffered here would be written by both processes.
    std::fflush(nullptr);
    const auto start = Clock::now();
    const pid_t process = fork();
    if (process < 0) throw std::runtime_error("no process for a check");
    if (process == 0) {
        close(ends[0]);
        runHere(check, subject, ends[1]);
    }
    close(ends[1]);

    Reading reading;
    const double limit = check.seconds * subject.patience;
    const bool ended = readAll(ends[0], start, limit, reading);
    close(ends[0]);
    if (!ended) kill(process, SIGKILL);
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    addEnding(reading, ended ? ending(status, reading.done)
                             : text("still running after ", limit, " seconds"));
    reading.result.seconds = secondsSince(start);
    return reading.result;
}

}  // namespace validate
