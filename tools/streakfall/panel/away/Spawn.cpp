#include "Spawn.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>

#include "Failure.h"

namespace tool::panel {

namespace {

// What the new process does with its files before it begins.
class FileActions {
  public:
    explicit FileActions(int errors) {
        posix_spawn_file_actions_init(&actions_);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            if (stream == STDERR_FILENO && errors >= 0)
                posix_spawn_file_actions_adddup2(&actions_, errors, stream);
            else
                posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

}  // namespace

pid_t spawn(const std::vector<std::string>& arguments, int errors) {
    std::vector<char*> pointers;
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    const FileActions actions(errors);
    pid_t child = -1;
    const int code =
        posix_spawnp(&child, pointers[0], actions.get(), nullptr, pointers.data(), environ);
    if (code != 0) fail(Exit::kEffect, "cannot start {}: {}", arguments[0], std::strerror(code));
    return child;
}

void openBrowser(const std::string& address) {
    // The shell ends at once and leaves the browser to the system.
    const pid_t shell =
        spawn({"/bin/sh", "-c", "command -v xdg-open && xdg-open \"$1\" &", "sh", address});
    (void)waitpid(shell, nullptr, 0);
}

}  // namespace tool::panel
