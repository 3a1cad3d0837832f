#include "Guard.h"

#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

#include "Failure.h"
#include "Text.h"

namespace tool::panel {

namespace {

constexpr char kTokenVariable[] = "STREAKFALL_PANEL_TOKEN";
constexpr std::size_t kLongestPath = 512;
constexpr std::size_t kMostReadOver = 64u << 20;
constexpr char kTooLargeSentence[] = "a request holds at most {} bytes";

// In a time that tells nothing of where they differ.
bool sameSecret(std::string_view one, std::string_view other) {
    if (one.size() != other.size()) return false;
    unsigned difference = 0;
    for (std::size_t i = 0; i < one.size(); ++i)
        difference |= static_cast<unsigned char>(one[i]) ^ static_cast<unsigned char>(other[i]);
    return difference == 0;
}

bool takesBody(const std::string& method) { return method == "POST" || method == "PUT"; }

}  // namespace

std::string randomName() {
    std::array<std::uint8_t, 16> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        fail(Exit::kEffect, "the system has no random numbers");
    std::string name;
    for (const std::uint8_t byte : bytes) name += fmt::format("{:02x}", byte);
    return name;
}

std::string chooseToken() {
    const char* given = std::getenv(kTokenVariable);
    if (given == nullptr || *given == '\0') return randomName();
    const std::string_view token(given);
    const bool plain = std::all_of(token.begin(), token.end(), [](unsigned char c) {
        return (c < 128 && std::isalnum(c) != 0) || c == '-' || c == '_';
    });
    if (!plain || token.size() < 16 || token.size() > 64)
        failUsage("{}: write 16 to 64 letters and digits, - or _", kTokenVariable);
    const std::string chosen(token);
    unsetenv(kTokenVariable);  // the browser and the renders that are started need not know
    return chosen;
}

void Guard::checkHead(const Ask& ask) {
    if (ask.path.size() > kLongestPath) refuse(Status::kTooLong, "the address is too long");
    for (const char* name : {"transfer-encoding", "content-encoding"})
        if (ask.headers.count(name) != 0)
            refuse(Status::kUnreadable, "a request with \"{}\" is not taken", name);
    const std::string length = ask.header("content-length");
    if (ask.headers.count("content-length") > 1 ||
        !std::all_of(length.begin(), length.end(), [](char c) { return c >= '0' && c <= '9'; }))
        refuse(Status::kUnreadable, "the length of the request cannot be read");
    // What is somewhat too large is read over, so that its sender hears the answer.
    if (length.size() > 9 || (!length.empty() && std::stoul(length) > kMostReadOver))
        refuse(Status::kTooLarge, kTooLargeSentence, kMostBodyBytes);
}

std::string Guard::admit(const Ask& ask) const {
    checkHead(ask);
    checkSender(ask);
    const std::string_view path = ask.path;
    const std::size_t end = std::min(path.find('/', 1), path.size());
    if (path.empty() || path[0] != '/' || !sameSecret(path.substr(1, end - 1), token_))
        refuse(Status::kForbidden, "open the panel by the address that the program printed");
    if (ask.body.size() > kMostBodyBytes)
        refuse(Status::kTooLarge, kTooLargeSentence, kMostBodyBytes);
    if (takesBody(ask.method)) {
        const std::string kind = lowered(ask.header("content-type"));
        if (trimmed(kind.substr(0, kind.find(';'))) != "application/json")
            refuse(Status::kKind, "the request's content is to be application/json");
    }
    if (end == path.size()) refuse(Status::kMissing, "the address ends with a slash");
    return std::string(path.substr(end + 1));
}

std::string Guard::address() const { return fmt::format("http://127.0.0.1:{}/{}/", port_, token_); }

void Guard::checkSender(const Ask& ask) const {
    const std::string host = lowered(ask.header("host"));
    if (ask.headers.count("host") != 1 ||
        (host != fmt::format("127.0.0.1:{}", port_) && host != fmt::format("localhost:{}", port_)))
        refuse(Status::kForbidden, "the panel is at 127.0.0.1:{} and under no other name", port_);
    const bool foreign =
        (ask.headers.count("origin") != 0 && lowered(ask.header("origin")) != "http://" + host) ||
        ask.header("sec-fetch-site") == "cross-site";
    if (foreign) refuse(Status::kForbidden, "another page may not use the panel");
}

}  // namespace tool::panel
