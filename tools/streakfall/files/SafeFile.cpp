#include "SafeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "Failure.h"

namespace tool {

namespace {

std::filesystem::path folderOf(const std::string& path) {
    const auto folder = std::filesystem::path(path).parent_path();
    return folder.empty() ? "." : folder;
}

// An open temporary file that is gone again unless it was renamed.
class Temporary {
  public:
    explicit Temporary(const std::string& target)
        : target_(target),
          path_(folderOf(target) / fmt::format(".{}.part-{}",
                                               std::filesystem::path(target).filename().string(),
                                               getpid())) {
        descriptor_ = open(path_.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0666);
        if (descriptor_ < 0) failWrite();
    }
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
    ~Temporary() {
        if (descriptor_ >= 0) close(descriptor_);
        if (!renamed_) unlink(path_.c_str());
    }

    void write(std::span<const std::byte> bytes) {
        while (!bytes.empty()) {
            const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) failWrite();
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        }
    }

    // Some systems tell of a full disk only when the file is synced or closed.
    void publish() {
        if (fsync(descriptor_) != 0 && errno != EINVAL) failWrite();
        const int descriptor = std::exchange(descriptor_, -1);
        if (close(descriptor) != 0) failWrite();
        if (rename(path_.c_str(), target_.c_str()) != 0) failWrite();
        renamed_ = true;
    }

  private:
    [[noreturn]] void failWrite() const {
        const int error = errno;
        if (descriptor_ < 0) unlink(path_.c_str());
        fail(Exit::kOutput, "cannot write {}: {}", target_, std::strerror(error));
    }

    std::string target_;
    std::string path_;
    int descriptor_ = -1;
    bool renamed_ = false;
};

}  // namespace

void writeWhole(const std::string& path, std::span<const std::byte> bytes) {
    checkWritable(path);
    Temporary file(path);
    file.write(bytes);
    file.publish();
}

void checkWritable(const std::string& path) {
    std::error_code ignored;
    const auto folder = folderOf(path);
    if (!std::filesystem::is_directory(folder, ignored))
        fail(Exit::kOutput, "cannot write {}: there is no folder {}", path, folder.string());
    const auto status = std::filesystem::status(path, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        fail(Exit::kOutput, "cannot write {}: it exists and is not a plain file", path);
    if (access(folder.c_str(), W_OK | X_OK) != 0)
        fail(Exit::kOutput, "cannot write {}: folder {}: {}", path, folder.string(),
             std::strerror(errno));
}

}  // namespace tool
