// The panel behind its sockets: what each request does. Tests and the fuzzer talk to it as the
// server does. Safe from any thread.
#pragma once

#include <string>

#include "Guard.h"
#include "PageFiles.h"
#include "Pages.h"
#include "RenderJobs.h"

namespace tool::panel {

struct PanelOptions {
    StudioOptions studio;
    std::string output;      // folder of renders; empty: none
    std::string program;     // the file that renders
    std::string version;     // "streakfall 1.5.2"
    std::string pageFolder;  // see PageFolder
};

// What the handlers of requests work on.
struct PanelParts {
    PanelOptions options;
    Studio studio;
    Pages pages;
    RenderJobs jobs;
    Json texts;  // {"en": {...}, "ja": {...}}, see EffectTexts
};

class Panel {
  public:
    // Throws Failure.
    Panel(const PanelOptions& options, Guard guard, Json texts);

    [[nodiscard]] Guard& guard() { return guard_; }
    [[nodiscard]] Pages& pages() { return parts_.pages; }
    [[nodiscard]] Studio& studio() { return parts_.studio; }

    // Never throws: what goes wrong is in the answer.
    [[nodiscard]] Answer answer(const Ask& ask);
    // The same of a request whose body has not been read; nothing when it may be.
    [[nodiscard]] static std::optional<Answer> refusalOf(const Ask& ask);
    // Of a request that is none.
    [[nodiscard]] static Answer refusal(Status status, const std::string& sentence);

    // Draws and renders leave off, and what comes in is refused.
    void end();
    // No render runs any more.
    [[nodiscard]] bool rests() const { return parts_.jobs.rest(); }

  private:
    [[nodiscard]] Answer handle(const Ask& ask);

    Guard guard_;
    PageFolder files_;
    PanelParts parts_;
};

}  // namespace tool::panel
