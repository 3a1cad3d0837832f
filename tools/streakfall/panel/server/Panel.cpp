#include "Panel.h"

#include <utility>

#include "Failure.h"
#include "Handlers.h"
#include "Text.h"

namespace tool::panel {

namespace {

using Handler = Answer (*)(PanelParts&, const Ask&, const std::string&);

// A star stands for one part of the path, which the handler gets.
struct Route {
    const char* method;
    const char* path;
    Handler handler;
};

constexpr Route kRoutes[] = {
    {"GET", "api/about", tellAbout},
    {"GET", "api/params", tellParams},
    {"GET", "api/looks", tellLooks},
    {"GET", "api/throws", tellThrows},
    {"POST", "api/pages", openPage},
    {"GET", "api/pages/*", showPage},
    {"DELETE", "api/pages/*", closePage},
    {"POST", "api/pages/*/change", changeValue},
    {"PUT", "api/pages/*/state", putState},
    {"POST", "api/pages/*/look", putLook},
    {"GET", "api/pages/*/look", sendLook},
    {"POST", "api/pages/*/picture", sendPicture},
    {"GET", "api/pages/*/command", tellCommand},
    {"POST", "api/pages/*/render", startRender},
    {"POST", "api/pages/*/defaults", changeDefaults},
    {"GET", "api/jobs/*", tellRender},
    {"DELETE", "api/jobs/*", stopRender},
};

bool matches(const Route& route, const std::string& path, std::string& name) {
    const auto wanted = split(route.path, '/');
    const auto given = split(path, '/');
    if (wanted.size() != given.size()) return false;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (wanted[i] == "*")
            name = given[i];
        else if (wanted[i] != given[i])
            return false;
    }
    return true;
}

Status statusOf(Exit code) { return code == Exit::kUsage ? Status::kUnreadable : Status::kFailed; }

Answer broken(const char* what) { return Refusal(Status::kBroken, what).answer(); }

// The page runs no code and shows no picture but its own, is shown in no other page, and is kept
// nowhere.
void addSafeHeaders(Answer& answer) {
    answer.headers.insert(
        {{"Cache-Control", "no-store"},
         {"X-Content-Type-Options", "nosniff"},
         {"Referrer-Policy", "same-origin"},
         {"Cross-Origin-Resource-Policy", "same-origin"},
         {"Cross-Origin-Opener-Policy", "same-origin"},
         {"Content-Security-Policy",
          "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob: data:; "
          "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'"}});
}

// Everything that can go wrong, as an answer.
template <class Action>
Answer answerTo(Action action) {
    Answer answer;
    try {
        answer = action();
    } catch (const Refusal& refusal) {
        answer = refusal.answer();
    } catch (const Failure& failure) {
        answer = Refusal(statusOf(failure.code()), failure.what()).answer();
    } catch (const std::bad_alloc&) {
        answer = broken("out of memory");
    } catch (const std::exception& error) {
        answer = broken(error.what());
    }
    addSafeHeaders(answer);
    return answer;
}

}  // namespace

Panel::Panel(const PanelOptions& options, Guard guard, Json texts)
    : guard_(std::move(guard)),
      files_(options.pageFolder),
      parts_{options, Studio(options.studio), {}, RenderJobs(options.program), std::move(texts)} {}

Answer Panel::answer(const Ask& ask) {
    return answerTo([&] { return handle(ask); });
}

std::optional<Answer> Panel::refusalOf(const Ask& ask) {
    try {
        Guard::checkHead(ask);
        return std::nullopt;
    } catch (const Refusal& refused) {
        return answerTo([&] { return refused.answer(); });
    }
}

Answer Panel::refusal(Status status, const std::string& sentence) {
    return answerTo([&] { return Refusal(status, sentence).answer(); });
}

void Panel::end() {
    parts_.studio.queue().end();
    parts_.jobs.stopAll();
}

Answer Panel::handle(const Ask& ask) {
    const std::string path = guard_.admit(ask);
    if (parts_.studio.hasEnded()) refuse(Status::kEnding, "the program is ending");
    bool known = false;
    for (const Route& route : kRoutes) {
        std::string name;
        if (!matches(route, path, name)) continue;
        if (ask.method == route.method) return route.handler(parts_, ask, name);
        known = true;
    }
    if (known) refuse(Status::kMethod, "this method is not for this address");
    if (path.starts_with("api/")) refuse(Status::kMissing, "there is no such address");
    if (ask.method != "GET") refuse(Status::kMethod, "this method is not for this address");
    return files_.file(path);
}

}  // namespace tool::panel
