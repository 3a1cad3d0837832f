#include "Interrupt.h"

#include <unistd.h>

#include <atomic>
#include <csignal>

#include "SafeFile.h"

namespace tool {

namespace {

constexpr int kEndedBySignal = 128;  // and the signal's number, as shells tell it

std::atomic<int> caught{0};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may touch nothing else");

void noteSignal(int number) {
    if (caught.exchange(number) == 0) return;
    dropTemporaries();
    _exit(kEndedBySignal + number);
}

}  // namespace

void watchSignals() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN) continue;  // as under nohup
        action.sa_handler = noteSignal;
        sigaction(number, &action, nullptr);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

int interruptSignal() { return caught; }

}  // namespace tool
