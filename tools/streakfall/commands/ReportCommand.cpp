#include <algorithm>
#include <fstream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

#include "Commands.h"
#include "Failure.h"
#include "FrameList.h"
#include "Say.h"
#include "Text.h"

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kNotAllThere = 1;

struct ReportOptions {
    std::vector<std::string> files;
    bool json = false;
};

// The best comes first: a frame that one run wrote is there, whatever others say of it.
constexpr const char* kStates[] = {"written", "skipped", "failed", "missing"};
enum State : std::size_t { kWritten, kSkipped, kFailed, kMissing };

State stateOf(const std::string& status) {
    const auto* found = std::find(std::begin(kStates), std::end(kStates), status);
    return found == std::end(kStates) ? kMissing : static_cast<State>(found - kStates);
}

// What several runs came to. A frame is told from others by its file and number.
class Sum {
  public:
    // Throws Failure (input) when the file is no report.
    void add(const std::string& path);

    [[nodiscard]] std::vector<int> framesOf(State state) const {
        std::vector<int> frames;
        for (const auto& [frame, its] : states_)
            if (its == state) frames.push_back(frame.first);
        return frames;
    }
    [[nodiscard]] bool whole() const {
        return framesOf(kFailed).empty() && framesOf(kMissing).empty() && lostChunks().empty();
    }
    void print() const;
    void printJson() const;

  private:
    // Parts of which there is no report.
    [[nodiscard]] std::vector<int> lostChunks() const;
    void addChunk(const std::string& chunk);

    std::map<std::pair<int, std::string>, State> states_;
    std::map<int, int> exits_;  // runs by exit code
    std::set<int> chunks_;      // those told of
    int parts_ = 0;             // the most that a chunk says there are
    double seconds_ = 0, longest_ = 0;
    int runs_ = 0;
};

void Sum::addChunk(const std::string& chunk) {
    const auto parts = split(chunk, '/');
    if (parts.size() != 2) return;
    chunks_.insert(parseInt(parts[0]).value_or(0));
    parts_ = std::max(parts_, parseInt(parts[1]).value_or(0));
}

void Sum::add(const std::string& path) try {
    std::ifstream file(path);
    if (!file) fail(Exit::kInput, "cannot read {}", path);
    const Json report = Json::parse(file);
    const double seconds = report.at("totals").at("seconds");
    for (const Json& frame : report.at("frames")) {
        const State state = stateOf(frame.at("status"));
        const std::pair key(frame.at("frame").get<int>(), frame.at("file").get<std::string>());
        const auto [found, isNew] = states_.try_emplace(key, state);
        if (!isNew) found->second = std::min(found->second, state);
    }
    addChunk(report.value("chunk", ""));
    ++exits_[report.at("exit").get<int>()];
    ++runs_;
    seconds_ += seconds;
    longest_ = std::max(longest_, seconds);
} catch (const Json::exception&) {
    fail(Exit::kInput, "{} is no report of streakfall render", path);
}

std::vector<int> Sum::lostChunks() const {
    std::vector<int> lost;
    for (int part = 1; part <= parts_; ++part)
        if (!chunks_.contains(part)) lost.push_back(part);
    return lost;
}

// "3 frames: 7,9-10" without its head.
std::string listed(const std::vector<int>& numbers) {
    const std::string text = describeFrames(numbers);
    return text.substr(text.find(": ") + 2);
}

void Sum::print() const {
    std::string line = fmt::format("{} frames: ", states_.size());
    for (const State state : {kWritten, kSkipped, kFailed, kMissing})
        line += fmt::format("{}{} {}", state == kWritten ? "" : ", ", framesOf(state).size(),
                            kStates[state]);
    tool::print("{}\n", line);
    for (const State state : {kFailed, kMissing})
        if (const auto frames = framesOf(state); !frames.empty())
            tool::print("{}: {}\n", kStates[state], listed(frames));
    if (parts_ > 0) tool::print("chunks: {} of {}\n", chunks_.size(), parts_);
    if (const auto lost = lostChunks(); !lost.empty())
        tool::print("no report of chunk: {}\n", listed(lost));
    tool::print("seconds: {:.1f} in {} run{}, {:.1f} in the longest\n", seconds_, runs_,
                runs_ == 1 ? "" : "s", longest_);
    std::string codes;
    for (const auto& [code, runs] : exits_)
        codes += fmt::format("{}{} ({} run{})", codes.empty() ? "" : ", ", code, runs,
                             runs == 1 ? "" : "s");
    tool::print("exit code: {}\n", codes);
}

void Sum::printJson() const {
    Json exits = Json::object();
    for (const auto& [code, runs] : exits_) exits[std::to_string(code)] = runs;
    Json all = {{"frames", states_.size()}};
    for (const State state : {kWritten, kSkipped, kFailed, kMissing})
        all[kStates[state]] = framesOf(state).size();
    all["failed_frames"] = framesOf(kFailed);
    all["missing_frames"] = framesOf(kMissing);
    all["chunks"] = parts_;
    all["missing_chunks"] = lostChunks();
    all["runs"] = runs_;
    all["seconds"] = seconds_;
    all["longest_seconds"] = longest_;
    all["exits"] = exits;
    tool::print("{}\n", all.dump(2));
}

int addUp(const ReportOptions& options) {
    Sum sum;
    for (const std::string& file : options.files) sum.add(file);
    if (options.json)
        sum.printJson();
    else
        sum.print();
    return sum.whole() ? 0 : kNotAllThere;
}

}  // namespace

void addReportCommand(CLI::App& program, int& result) {
    CLI::App* command =
        program.add_subcommand("report",
                               "Add up what \"render --report\" wrote on several machines;\n"
                               "ends with 0 when all frames are there, else with 1");
    const auto options = std::make_shared<ReportOptions>();
    command->add_option("FILE", options->files, "Reports")->type_name("")->required();
    command->add_flag("--json", options->json, "As JSON");
    command->callback([options, &result] { result = addUp(*options); });
}

}  // namespace tool
