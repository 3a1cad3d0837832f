#include "Interrupt.h"

#include <atomic>
#include <csignal>

namespace tool {

namespace {

std::atomic<int> caught{0};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may touch nothing else");

void noteSignal(int number) { caught = number; }

}  // namespace

void watchSignals() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN) continue;  // as under nohup
        action.sa_handler = noteSignal;
        sigaction(number, &action, nullptr);
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);  // the write itself then tells that the file is too large
}

int interruptSignal() { return caught; }

}  // namespace tool
