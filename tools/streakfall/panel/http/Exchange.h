// One request and its answer, as the panel sees them: apart from sockets, so that tests and the
// fuzzer drive the panel as the network does.
#pragma once

#include <fmt/format.h>

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "host/Blocks.h"

namespace tool::panel {

using Json = nlohmann::ordered_json;

enum class Status : int {
    kOk = 200,
    kCreated = 201,
    kAccepted = 202,
    kUnreadable = 400,
    kForbidden = 403,
    kMissing = 404,
    kMethod = 405,
    kConflict = 409,
    kTooLarge = 413,
    kTooLong = 414,
    kKind = 415,
    kFailed = 422,
    kBroken = 500,
    kEnding = 503,
};

// Names of headers in small letters.
struct Ask {
    std::string method;
    std::string path;  // decoded, without the query
    std::multimap<std::string, std::string> headers;
    std::map<std::string, std::string> query;
    std::string body;

    // Empty when there is none.
    [[nodiscard]] std::string header(const std::string& name) const {
        const auto found = headers.find(name);
        return found == headers.end() ? std::string() : found->second;
    }
};

struct Answer {
    Status status = Status::kOk;
    std::string type = "application/json";
    std::map<std::string, std::string> headers{};
    std::string text{};
    standin::BlockBytes bytes{};  // behind the text
};

[[nodiscard]] inline Answer jsonAnswer(const Json& json, Status status = Status::kOk) {
    Answer answer;
    answer.status = status;
    // What a file's name or a system's message holds need not be UTF-8.
    answer.text = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    return answer;
}

// Ends the handling of a request with a status and one sentence for the user.
class Refusal : public std::runtime_error {
  public:
    Refusal(Status status, const std::string& sentence, Json more = Json::object())
        : std::runtime_error(sentence), status_(status), more_(std::move(more)) {}

    [[nodiscard]] Answer answer() const {
        // A name from the request in front may begin with a zero, which ends an exception's text.
        const bool told = *what() != '\0';
        Json json = {{"error", told ? what() : "the request could not be read"}};
        json.update(more_);
        return jsonAnswer(json, status_);
    }

  private:
    Status status_;
    Json more_;  // members that the page wants beside the sentence
};

template <class... Args>
[[noreturn]] void refuse(Status status, fmt::format_string<Args...> format, Args&&... args) {
    throw Refusal(status, fmt::format(format, std::forward<Args>(args)...));
}

}  // namespace tool::panel
