#include "EffectTexts.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "EffectSession.h"
#include "EffectText.h"
#include "Failure.h"
#include "OptionsDialog.h"

namespace tool::panel {

namespace {

Json textsOf(const std::string& module) {
    EffectSession session(module, Defaults::kOwn);
    standin::Instance instance = session.makeInstance({});
    const StandinDialogWindow& window = OptionsDialog(instance).look();
    return {{"about", shownText(session.host().about())},
            {"dialog",
             {{"title", shownText(window.title)},
              {"group", shownText(window.groupBox.text)},
              {"save", shownText(window.firstButton.text)},
              {"restore", shownText(window.secondButton.text)}}}};
}

[[noreturn]] void tell(const std::string& module, Language language, int words) {
    Json told;
    try {
        askForLanguage(std::string(languageCode(language)));
        told = textsOf(module);
    } catch (const std::exception& error) {
        told = {{"error", error.what()}};
    }
    const std::string text = told.dump(-1, ' ', false, Json::error_handler_t::replace);
    // Shorter than what a pipe holds.
    const bool whole = write(words, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    _exit(whole ? 0 : 1);
}

}  // namespace

EffectTexts::EffectTexts(const std::string& module, Language language) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) fail(Exit::kEffect, "no pipe: {}", std::strerror(errno));
    words_ = ends[0];
    child_ = fork();
    if (child_ == 0) tell(module, language, ends[1]);
    close(ends[1]);
    if (child_ < 0) {
        close(words_);
        fail(Exit::kEffect, "no process: {}", std::strerror(errno));
    }
}

EffectTexts::~EffectTexts() {
    close(words_);
    while (waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

Json EffectTexts::take() {
    std::string text;
    char buffer[4096];
    for (;;) {
        const ssize_t count = read(words_, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        text.append(buffer, static_cast<std::size_t>(count));
    }
    Json told = Json::parse(text, nullptr, false);
    if (!told.is_object()) fail(Exit::kEffect, "the effect's texts could not be had");
    if (told.contains("error")) fail(Exit::kEffect, "{}", told["error"].get<std::string>());
    return told;
}

}  // namespace tool::panel
