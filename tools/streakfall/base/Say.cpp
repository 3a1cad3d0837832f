#include "Say.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <mutex>

namespace tool {

namespace {

std::mutex outputMutex;
int outputError = 0;  // the first one
bool outputClosed = false;

void note(bool good) {
    if (!good && outputError == 0) outputError = errno;
}

}  // namespace

void sayText(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(STDERR_FILENO, text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

void printText(std::string_view text) {
    const std::lock_guard lock(outputMutex);
    note(std::fwrite(text.data(), 1, text.size(), stdout) == text.size());
}

std::string flushOutput() {
    const std::lock_guard lock(outputMutex);
    note(std::fflush(stdout) == 0);
    if (outputError == 0 || outputError == EPIPE || outputClosed) return "";
    return std::string("cannot write standard output: ") + std::strerror(outputError);
}

void guardStreams() {
    std::signal(SIGPIPE, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) >= 0 || errno != EBADF) continue;
        // The lowest free number, which is this one. Not for writing: what is written still fails.
        (void)open("/dev/null", O_RDONLY);
        if (stream == STDOUT_FILENO) outputClosed = true;
    }
}

}  // namespace tool
