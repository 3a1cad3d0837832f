#include "Server.h"

#include <httplib.h>

#include <cstring>

#include "Failure.h"
#include "Text.h"

namespace tool::panel {

namespace {

// Threads, each with a connection of a browser, which has up to six; one that is quiet for a second
// is closed, and opened again by the browser without notice.
constexpr int kConnections = 48;
constexpr int kQuietSeconds = 1;
constexpr int kMostRequests = 1'000'000;
constexpr int kPatience = 5;  // seconds, for a request that comes in slowly

Ask askFrom(const httplib::Request& request) {
    // The library leaves the body of an answer to HEAD away.
    Ask ask{request.method == "HEAD" ? "GET" : request.method, request.path, {}, {}, request.body};
    for (const auto& [name, value] : request.headers) ask.headers.emplace(lowered(name), value);
    for (const auto& [name, value] : request.params) ask.query.emplace(name, value);
    return ask;
}

// Bytes of known length, which the library sends as they are: it would spend longer packing a
// picture than the loopback takes to carry it.
void send(Answer answer, httplib::Response& response) {
    response.status = static_cast<int>(answer.status);
    for (const auto& [name, value] : answer.headers) response.set_header(name, value);
    const auto held = std::make_shared<const Answer>(std::move(answer));
    const std::size_t head = held->text.size();
    response.set_content_provider(
        head + held->bytes.size(), held->type,
        [held, head](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
            if (offset < head)
                return sink.write(held->text.data() + offset, std::min(length, head - offset));
            const auto* bytes = reinterpret_cast<const char*>(held->bytes.data());
            return sink.write(bytes + (offset - head), length);
        });
}

// A port in use is an error, and not shared with whoever has it.
void ownPortAlone(int socket) {
    const int on = 1;
    (void)setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
}

void setUp(httplib::Server& server, Panel& panel) {
    server.new_task_queue = [] { return new httplib::ThreadPool(kConnections); };
    server.set_tcp_nodelay(true);
    server.set_socket_options(ownPortAlone);
    server.set_keep_alive_max_count(kMostRequests);
    server.set_keep_alive_timeout(kQuietSeconds);
    server.set_read_timeout(kPatience);
    server.set_write_timeout(kPatience);
    server.set_payload_max_length(kMostBodyBytes);
    server.set_pre_routing_handler(
        [](const httplib::Request& request, httplib::Response& response) {
            // A part of an answer is of no use to a page; the whole is right for any range.
            const_cast<httplib::Request&>(request).ranges.clear();
            auto refusal = Panel::refusalOf(askFrom(request));
            if (!refusal) return httplib::Server::HandlerResponse::Unhandled;
            // What is still on its way is no next request.
            auto& headers = const_cast<httplib::Request&>(request).headers;
            headers.erase("Connection");
            headers.emplace("Connection", "close");
            send(std::move(*refusal), response);
            return httplib::Server::HandlerResponse::Handled;
        });
    const auto answer = [&panel](const httplib::Request& request, httplib::Response& response) {
        send(panel.answer(askFrom(request)), response);
    };
    constexpr char kAny[] = ".*";
    server.Get(kAny, answer).Post(kAny, answer).Put(kAny, answer).Delete(kAny, answer);
    server.Patch(kAny, answer).Options(kAny, answer);
    // What the library refuses by itself: it could not be read, or is too large.
    server.set_error_handler([](const httplib::Request&, httplib::Response& response) {
        if (response.content_provider_ != nullptr) return;
        send(Panel::refusal(Status(response.status),
                            response.status == static_cast<int>(Status::kTooLarge)
                                ? "the request is too large"
                                : "the request could not be read"),
             response);
    });
}

}  // namespace

Server::Server(Panel& panel, int port) : server_(std::make_unique<httplib::Server>()) {
    constexpr char kLoopback[] = "127.0.0.1";
    setUp(*server_, panel);
    const bool any = port == 0;
    const int bound = any ? server_->bind_to_any_port(kLoopback)
                      : server_->bind_to_port(kLoopback, port) ? port
                                                               : -1;
    if (bound <= 0)
        failUsage("--port: cannot listen at {}:{}: {}", kLoopback, port, std::strerror(errno));
    panel.guard().servesAt(bound);
    std::promise<void> ending;
    ended_ = ending.get_future();
    listener_ = std::thread([this, ending = std::move(ending)]() mutable {
        (void)server_->listen_after_bind();
        ending.set_value();
    });
}

Server::~Server() {
    server_->stop();
    if (listener_.joinable()) listener_.join();
}

bool Server::stop(std::chrono::milliseconds patience) {
    server_->stop();
    return ended_.wait_for(patience) == std::future_status::ready;
}

}  // namespace tool::panel
