#include "SafeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <random>

#include "Failure.h"
#include "OpenTemporaries.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kTemporaryEnding = ".part";

fs::path folderOf(const std::string& path) {
    const auto folder = fs::path(path).parent_path();
    return folder.empty() ? "." : folder;
}

// Letters, digits and minus of the machine's name, which a network shows with more.
std::string hostName() {
    char name[65] = {};
    if (gethostname(name, sizeof name - 1) != 0) return "host";
    std::string text(name);
    text.resize(std::min(text.size(), text.find('.')));
    std::erase_if(text,
                  [](char c) { return !std::isalnum(static_cast<unsigned char>(c)) && c != '-'; });
    return text.substr(0, 32);
}

// A file's name may have 255 bytes: a longer temporary one has a part of it, and none is unlike.
std::string temporaryStart(const std::string& name) {
    constexpr std::size_t kRoom = 180;
    return "." + name.substr(0, kRoom) + ".";
}

std::string temporaryPath(const std::string& target) {
    thread_local std::random_device random;
    const auto part = static_cast<std::uint64_t>(random()) << 32 | random();
    return folderOf(target) / fmt::format("{}{}-{:016x}{}",
                                          temporaryStart(fs::path(target).filename().string()),
                                          hostName(), part, kTemporaryEnding);
}

// An open temporary file that is gone again unless it was renamed.
class Temporary {
  public:
    explicit Temporary(const std::string& target)
        : target_(target), path_(temporaryPath(target)), entry_(path_) {
        descriptor_ = open(path_.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
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
    OpenTemporary entry_;
    int descriptor_ = -1;
    bool renamed_ = false;
};

bool isLeftover(const std::string& file, const std::set<std::string>& names) {
    if (!file.starts_with('.') || !file.ends_with(kTemporaryEnding)) return false;
    const auto machine = file.rfind('.', file.size() - kTemporaryEnding.size() - 1);
    if (machine == std::string::npos || machine == 0) return false;
    return std::any_of(names.begin(), names.end(), [&](const std::string& name) {
        return file.compare(0, machine + 1, temporaryStart(name)) == 0;
    });
}

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
    if (!fs::is_directory(folder, ignored))
        fail(Exit::kOutput, "cannot write {}: there is no folder {}", path, folder.string());
    const auto status = fs::status(path, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status))
        fail(Exit::kOutput, "cannot write {}: it exists and is not a plain file", path);
    if (access(folder.c_str(), W_OK | X_OK) != 0)
        fail(Exit::kOutput, "cannot write {}: folder {}: {}", path, folder.string(),
             std::strerror(errno));
}

std::vector<std::string> clearLeftovers(const std::string& folder,
                                        const std::set<std::string>& names) {
    constexpr std::chrono::hours kDay(24);
    std::vector<std::string> cleared;
    std::error_code error;
    const auto now = fs::file_time_type::clock::now();
    for (fs::directory_iterator at(folder.empty() ? "." : folder, error), end; !error && at != end;
         at.increment(error)) {
        if (!isLeftover(at->path().filename().string(), names)) continue;
        std::error_code gone;  // another run may have cleared it
        const auto time = at->last_write_time(gone);
        if (gone || now - time < kDay || !fs::remove(at->path(), gone)) continue;
        cleared.push_back(at->path().string());
    }
    return cleared;
}

void dropTemporaries() noexcept { OpenTemporary::dropAll(); }

}  // namespace tool
