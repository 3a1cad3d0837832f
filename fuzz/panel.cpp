// What a browser, or whoever gets at the panel's port, may send: requests, each a line and its body
// in the next,
//
//   POST api/pages/P/picture
//   {"frame": 3, "change": {"param": 11, "value": 20}}
//   GET /etc/passwd host=evil.example
//
// P is the page that was opened; a path that begins with a slash has no token, and what stands
// behind it are headers. All go through the panel as the server hands them over, on a page of their
// own. Whatever comes, the answer is whole, a refusal has a sentence, and the page goes on.
#include "Panel.h"

#include <filesystem>

#include "Stage.h"
#include "Text.h"

using namespace fuzz;
using namespace tool::panel;

namespace {

namespace fs = std::filesystem;

constexpr char kToken[] = "0123456789abcdef";
constexpr int kMostRequests = 24;

// With the module in a folder of its own, since defaults are saved beside it.
class FuzzedPanel {
  public:
    FuzzedPanel() {
        std::string pattern = fs::temp_directory_path() / "fuzz-panel-XXXXXX";
        folder_ = ::mkdtemp(pattern.data());
        fs::copy_file(STREAKFALL_MODULE, folder_ / "effect.so");
        PanelOptions options;
        options.studio.module = folder_ / "effect.so";
        options.studio.size = "24x16";
        const Json texts = {{"about", "words"}, {"dialog", Json::object()}};
        panel_ =
            std::make_unique<Panel>(options, Guard(kToken), Json{{"en", texts}, {"ja", texts}});
        panel_->guard().servesAt(1);
    }
    ~FuzzedPanel() {
        panel_.reset();
        fs::remove_all(folder_);
    }
    FuzzedPanel(const FuzzedPanel&) = delete;
    FuzzedPanel& operator=(const FuzzedPanel&) = delete;

    Panel& operator*() { return *panel_; }

  private:
    fs::path folder_;
    std::unique_ptr<Panel> panel_;
};

Panel& panel() {
    static FuzzedPanel only;
    return *only;
}

void readPath(Ask& ask, std::string_view path, const std::string& page) {
    const auto mark = path.find('?');
    ask.path = path.substr(0, mark);
    if (!ask.path.starts_with('/')) ask.path = "/" + std::string(kToken) + "/" + ask.path;
    if (const auto at = ask.path.find("/P"); at != std::string::npos)
        ask.path.replace(at + 1, 1, page);
    if (mark == std::string_view::npos) return;
    for (const std::string_view part : tool::split(path.substr(mark + 1), '&')) {
        const auto equals = std::min(part.find('='), part.size());
        ask.query.emplace(part.substr(0, equals), part.substr(std::min(equals + 1, part.size())));
    }
}

Ask readAsk(std::string_view line, std::string_view body, const std::string& page) {
    const auto words = tool::split(line, ' ');
    Ask ask;
    ask.method = words[0];
    ask.headers = {{"host", "127.0.0.1:1"}, {"content-type", "application/json"}};
    ask.body = body;
    readPath(ask, words.size() > 1 ? words[1] : "", page);
    for (std::size_t i = 2; i < words.size(); ++i) {
        const auto equals = std::min(words[i].find('='), words[i].size());
        const std::string name = tool::lowered(words[i].substr(0, equals));
        if (i % 2 == 0) ask.headers.erase(name);  // else it is there twice
        ask.headers.emplace(name, words[i].substr(std::min(equals + 1, words[i].size())));
    }
    return ask;
}

Answer send(const char* method, const std::string& path) {
    return panel().answer(readAsk(std::string(method) + " " + path, "{}", ""));
}

void checkAnswer(const Ask& ask, const Answer& answer) {
    const int status = static_cast<int>(answer.status);
    expect(status >= 200 && status < 500, ask.method, " ", ask.path, ": ", status, answer.text);
    expect(answer.headers.contains("Content-Security-Policy"), "an answer without its guard");
    if (answer.type != "application/json" && answer.type != "application/octet-stream") return;
    const Json json = Json::parse(answer.text, nullptr, false);
    expect(!json.is_discarded(), ask.path, ": no JSON: ", answer.text);
    if (status >= 300) {
        expect(!json.value("error", "").empty(), ask.path, ": a refusal without words");
        return;
    }
    const bool admitted = ask.path.starts_with("/" + std::string(kToken) + "/");
    expect(admitted, ask.path, ": served without the token");
    if (!answer.bytes.size()) return;
    expect(answer.bytes.size() ==
               json.at("width").get<std::size_t>() * json.at("height").get<std::size_t>() * 4,
           "a picture of another size than it says");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Json opened = Json::parse(send("POST", "api/pages").text);
    const std::string page = opened.at("page");
    const auto lines = tool::split(textOf(data, size), '\n');
    for (std::size_t i = 0; i < lines.size() && i < 2 * kMostRequests; i += 2) {
        const Ask ask = readAsk(lines[i], i + 1 < lines.size() ? lines[i + 1] : "", page);
        checkAnswer(ask, panel().answer(ask));
    }
    send("DELETE", "api/pages/" + page);
    standin::Host& host = panel().studio().session().host();
    expect(host.ledger().violationText().empty(), host.ledger().violationText());
    expect(host.ledger().live(standin::Loan::param) == 0, "a parameter is not given back");
    return 0;
}
