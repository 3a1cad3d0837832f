// The program as a browser meets it: over its socket, and to its end.
#include <fcntl.h>
#include <httplib.h>
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "PanelFixture.h"

namespace tool::panel {

namespace {

using Clock = std::chrono::steady_clock;

// `streakfall panel` as a process; its words on standard output come through a file.
class RunningPanel {
  public:
    RunningPanel(const fs::path& folder, std::vector<std::string> arguments) {
        const std::string words = (folder / "words.txt").string();
        arguments.insert(arguments.begin(), {STREAKFALL_PROGRAM, "panel", "--no-open", "--module",
                                             (folder / "effect.so").string()});
        std::vector<char*> pointers;
        for (std::string& argument : arguments) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, words.c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0600);
        EXPECT_EQ(
            posix_spawn(&process_, STREAKFALL_PROGRAM, &actions, nullptr, pointers.data(), environ),
            0);
        posix_spawn_file_actions_destroy(&actions);
        for (int i = 0; i < 400 && address_.find('\n') == std::string::npos; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(25));
            address_ = contentOf(words);
        }
        const auto colon = address_.rfind(':');
        const auto slash = address_.find('/', colon);
        port_ = std::atoi(address_.c_str() + colon + 1);
        base_ = address_.substr(slash, address_.find('\n') - slash);
    }
    ~RunningPanel() {
        if (process_ > 0) (void)end(SIGKILL);
    }
    RunningPanel(const RunningPanel&) = delete;
    RunningPanel& operator=(const RunningPanel&) = delete;

    // Its exit code, and the seconds that it took.
    std::pair<int, double> end(int signal) {
        const auto start = Clock::now();
        kill(process_, signal);
        int status = 0;
        waitpid(process_, &status, 0);
        process_ = -1;
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
                std::chrono::duration<double>(Clock::now() - start).count()};
    }
    [[nodiscard]] int port() const { return port_; }
    [[nodiscard]] const std::string& base() const { return base_; }
    [[nodiscard]] fs::path proc() const { return fs::path("/proc") / std::to_string(process_); }
    // "VmRSS" and "Threads".
    [[nodiscard]] long status(const std::string& name) const {
        const std::string text = contentOf(proc() / "status");
        return std::atol(text.c_str() + text.find(name + ":") + name.size() + 1);
    }
    [[nodiscard]] long descriptors() const {
        return std::distance(fs::directory_iterator(proc() / "fd"), fs::directory_iterator());
    }

  private:
    pid_t process_ = -1;
    std::string address_, base_;
    int port_ = 0;
};

class Browser {
  public:
    explicit Browser(const RunningPanel& panel)
        : base_(panel.base()), client_("127.0.0.1", panel.port()) {
        client_.set_keep_alive(true);
        client_.set_tcp_nodelay(true);
        client_.set_read_timeout(30);
    }
    httplib::Client& client() { return client_; }
    Json post(const std::string& path, const Json& body) {
        const auto answer = client_.Post(base_ + path, body.dump(), "application/json");
        if (!answer || answer->status >= 300)
            return {{"failed", answer ? answer->body : "nothing"}};
        if (answer->get_header_value("Content-Type") == "application/json")
            return Json::parse(answer->body);
        const auto head = std::stoul(answer->get_header_value("X-Head-Bytes"));
        return Json::parse(answer->body.substr(0, head));
    }
    std::string openPage() {
        return "api/pages/" + post("api/pages", Json::object()).value("page", "");
    }

  private:
    std::string base_;
    httplib::Client client_;
};

TEST_F(PanelTest, ServerListensOnTheLoopbackAddressAndOnItsOwnPort) {
    const RunningPanel running(folder_, {"--size", "64x48"});
    ASSERT_GT(running.port(), 0);
    int listening = 0;
    for (const char* table : {"net/tcp", "net/tcp6"}) {
        std::istringstream lines(contentOf(running.proc() / table));
        const std::string port = fmt::format(":{:04X} ", running.port());
        for (std::string line; std::getline(lines, line);) {
            if (line.find(port) == std::string::npos || line.find(" 0A ") == std::string::npos)
                continue;
            EXPECT_NE(line.find(" 0100007F" + port), std::string::npos) << line;
            ++listening;
        }
    }
    EXPECT_EQ(listening, 1);
    // A second one at the same port is told so.
    const std::string second =
        fmt::format("\"{}\" panel --no-open --module {} --port {} 2>{}", STREAKFALL_PROGRAM,
                    path("effect.so"), running.port(), path("error.txt"));
    EXPECT_EQ(WEXITSTATUS(std::system(second.c_str())), 2);
    EXPECT_NE(contentOf(path("error.txt")).find("--port: cannot listen"), std::string::npos);
}

TEST_F(PanelTest, ServerRefusesWhatIsNoRequestOfThePage) {
    const RunningPanel running(folder_, {"--size", "64x48"});
    Browser browser(running);
    httplib::Client& client = browser.client();
    const std::string about = running.base() + "api/about";
    const auto answer = client.Get(about);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 200);
    const Json told = Json::parse(answer->body);
    EXPECT_NE(told["dialog"]["en"], told["dialog"]["ja"]) << "the effect's own words in both";
    EXPECT_EQ(client.Get("/api/about")->status, 403);
    EXPECT_EQ(client.Get(about, {{"Host", "evil.example"}})->status, 403);
    EXPECT_EQ(client.Get(about, {{"Origin", "http://evil.example"}})->status, 403);
    EXPECT_EQ(client.Get(running.base() + "%2e%2e/%2e%2e/etc/passwd")->status, 404);
    EXPECT_EQ(client.Get(about, {{"Range", "bytes=0-3"}})->body, answer->body);
    const std::string pages = running.base() + "api/pages";
    EXPECT_EQ(client.Post(pages, std::string(2 << 20, 'x'), "application/json")->status, 413);
    EXPECT_EQ(client.Post(pages, "a=b", "application/x-www-form-urlencoded")->status, 415);
    EXPECT_EQ(client.Post(pages, "{,}", "application/json")->status, 400);
    EXPECT_EQ(client.Patch(pages, "{}", "application/json")->status, 405);
    const auto chunked = client.Post(
        pages,
        [](std::size_t, httplib::DataSink& sink) {
            sink.write("{}", 2);
            sink.done();
            return true;
        },
        "application/json");
    EXPECT_EQ(chunked->status, 400);
    EXPECT_EQ(client.Get(about)->status, 200) << "and goes on";
}

TEST_F(PanelTest, ServerLeavesNothingBehind) {
    const RunningPanel running(folder_, {"--size", "320x180"});
    Browser browser(running);
    // One round as a page makes it, on a connection of its own, without a word at its end.
    const auto visit = [&](int number, int requests) {
        Browser visitor(running);
        const std::string page = visitor.openPage();
        for (int i = 0; i < requests; ++i) {
            const Json request = {
                {"frame", i}, {"divisor", 1 + i % 3}, {"slot", i % 5 == 4 ? "thumbnail" : "main"}};
            EXPECT_EQ(visitor.post(page + "/picture", request).value("frame", -1), i);
        }
        if (number % 2 == 0) visitor.client().Delete(running.base() + page);
    };
    // All the pages there may be, so that no later one adds to them.
    for (int i = 0; i < 66; ++i) visit(1, 3);
    // Connections are closed after a quiet second, one by one.
    const auto descriptorsAtRest = [&](long expected) {
        for (int i = 0; i < 60 && running.descriptors() > expected; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        return running.descriptors();
    };
    constexpr long kWithOneConnection = 8;
    const long descriptors = descriptorsAtRest(kWithOneConnection);
    const long memory = running.status("VmRSS");
    const long threads = running.status("Threads");
    for (int i = 0; i < 50; ++i) visit(i, 20);
    EXPECT_LE(descriptorsAtRest(descriptors), descriptors);
    EXPECT_EQ(running.status("Threads"), threads);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)  // they keep what is freed
    EXPECT_LT(running.status("VmRSS"), memory + 4 * 1024) << "KiB";
#else
    (void)memory;
#endif
}

TEST_F(PanelTest, ServerEndsWithinASecondWhateverItDoes) {
    RunningPanel running(folder_, {"--size", "1920x1080", "-o", path("out")});
    open();
    Browser browser(running);
    const std::string page = browser.openPage();
    for (const auto& [name, value] : kSlow.items())
        browser.post(page + "/change", {{"param", index(name)}, {"value", value}, {"frame", 0}});
    const std::string job =
        browser.post(page + "/render", {{"first", 1}, {"last", 9}}).value("job", "");
    EXPECT_NE(job, "");
    std::thread drawing([&] { Browser(running).post(page + "/picture", {{"frame", 0}}); });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    const auto [code, seconds] = running.end(SIGINT);
    drawing.join();
    EXPECT_EQ(code, 0);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LT(seconds, 1.0);
#else
    (void)seconds;
#endif
    // The render ends by itself, and takes its half file along.
    const auto isTidy = [&] {
        const auto files = fs::directory_iterator(path("out"));
        return std::all_of(begin(files), end(files),
                           [](const auto& entry) { return isWholePicture(entry.path().string()); });
    };
    for (int i = 0; i < 200 && !isTidy(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_TRUE(isTidy());
}

}  // namespace

}  // namespace tool::panel
