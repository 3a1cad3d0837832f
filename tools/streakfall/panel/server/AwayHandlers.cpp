#include <filesystem>

#include "Body.h"
#include "FrameList.h"
#include "Handlers.h"
#include "LookFile.h"
#include "RenderLine.h"

namespace tool::panel {

namespace {

constexpr int kMostRendered = 100'000;

std::array<int, 2> inOrder(int first, int last) {
    if (last < first) refuse(Status::kUnreadable, "the last frame is before the first");
    if (last - first >= kMostRendered)
        refuse(Status::kUnreadable, "more than {} frames at once", kMostRendered);
    return {first, last};
}

std::string outputPath(const PanelOptions& options) {
    return (std::filesystem::path(options.output) / outputName(options.studio)).string();
}

}  // namespace

Answer sendLook(PanelParts& parts, const Ask& ask, const std::string& name) {
    const auto page = parts.pages.find(name);
    const auto given = ask.query.find("name");
    const std::string title = given == ask.query.end() ? "" : given->second;
    Studio& studio = parts.studio;
    return jsonAnswer({{"name", "look.json"},
                       {"text", lookFile(page->values(), studio.params(), studio.layer(), title)}});
}

Answer tellCommand(PanelParts& parts, const Ask& ask, const std::string& name) {
    const auto page = parts.pages.find(name);
    Studio& studio = parts.studio;
    const bool sequence = studio.input() && studio.input()->pattern.hasNumber();
    const int here = page->frame();
    const auto frames =
        inOrder(frameOf(ask, "first").value_or(sequence ? studio.frames()[0] : here),
                frameOf(ask, "last").value_or(sequence ? studio.frames()[1] : here));
    const auto line = renderArguments(studio, page->values(), outputPath(parts.options), frames);
    return jsonAnswer({{"command", shellLine(line)}});
}

Answer startRender(PanelParts& parts, const Ask& ask, const std::string& name) {
    const auto page = parts.pages.find(name);
    const Body body(ask.body);
    const auto frames = inOrder(body.whole("first", -kLastFrame, kLastFrame),
                                body.whole("last", -kLastFrame, kLastFrame));
    if (parts.options.output.empty())
        refuse(Status::kConflict, "there is no folder to render into; start the panel with -o");
    const int total = frames[1] - frames[0] + 1;
    const std::string job = parts.jobs.start(
        name, renderArguments(parts.studio, page->values(), outputPath(parts.options), frames),
        total);
    return jsonAnswer({{"job", job}, {"total", total}}, Status::kAccepted);
}

Answer tellRender(PanelParts& parts, const Ask&, const std::string& name) {
    Json told = parts.jobs.find(name)->toJson();
    told["folder"] = parts.options.output;
    return jsonAnswer(told);
}

Answer stopRender(PanelParts& parts, const Ask& ask, const std::string& name) {
    parts.jobs.find(name)->stop();
    return tellRender(parts, ask, name);
}

Answer changeDefaults(PanelParts& parts, const Ask& ask, const std::string& name) {
    const auto page = parts.pages.find(name);
    const std::string action = Body(ask.body).text("action");
    if (action == "save")
        page->saveDefaults();
    else if (action == "restore")
        page->restoreDefaults();
    else
        refuse(Status::kUnreadable, "\"action\" is to be save or restore");
    return jsonAnswer({{"file", parts.studio.session().settingsFile()}});
}

}  // namespace tool::panel
