#include "RunReport.h"

#include <fstream>
#include <span>

#include "SafeFile.h"

namespace tool {

using Json = nlohmann::ordered_json;

void RunReport::add(const FrameJob& job, const MadeFrame& made) {
    Json frame = {{"frame", job.frame},
                  {"file", job.output},
                  {"status", outcomeName(made.outcome)},
                  {"seconds", made.seconds},
                  {"effect_seconds", made.effectSeconds},
                  {"fingerprint", made.fingerprint}};
    if (!made.trouble.empty()) frame["trouble"] = made.trouble;
    frames_.push_back(std::move(frame));
    known_.insert(job.frame);
}

void RunReport::write(const std::string& path, const MakerShare& share, const Progress& progress,
                      int exitCode) const {
    const Progress::Totals& totals = progress.totals();
    Json frames = frames_;
    for (const int frame : share.options.frames)
        if (!known_.contains(frame))
            frames.push_back({{"frame", frame},
                              {"file", share.options.output.fileFor(frame)},
                              {"status", "missing"}});
    const Json report = {{"program", share.program},
                         {"effect", share.session.version()},
                         {"form", share.form.output.label},
                         {"values", share.arguments.toJson(share.form.size)},
                         {"chunk", share.options.chunk},
                         {"frames", frames},
                         {"totals",
                          {{"asked", share.options.frames.size()},
                           {"written", totals.written},
                           {"skipped", totals.skipped},
                           {"failed", totals.failed},
                           {"missing", frames.size() - frames_.size()},
                           {"seconds", progress.seconds()}}},
                         {"exit", exitCode}};
    const std::string text = report.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
    writeWhole(path, std::as_bytes(std::span(text)));
}

// A report that is broken or was written by something else tells nothing.
std::map<std::string, std::string> reportedFingerprints(const std::string& path) {
    std::map<std::string, std::string> known;
    if (path.empty()) return known;
    std::ifstream file(path);
    const Json report = Json::parse(file, nullptr, false);
    if (!report.is_object() || !report.contains("frames") || !report["frames"].is_array())
        return known;
    for (const Json& frame : report["frames"]) {
        if (!frame.is_object()) continue;
        const auto text = [&](const char* key) {
            return frame.contains(key) && frame[key].is_string() ? frame[key].get<std::string>()
                                                                 : "";
        };
        const std::string status = text("status");
        if (status == "written" || status == "skipped") known[text("file")] = text("fingerprint");
    }
    return known;
}

}  // namespace tool
