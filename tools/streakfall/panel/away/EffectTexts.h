// The effect's own texts in both languages. An effect settles its language once in a process, so
// each language is asked for in a process of its own.
#pragma once

#include <sys/types.h>

#include <string>

#include "Exchange.h"
#include "Words.h"

namespace tool::panel {

// {"about": text, "dialog": {"title", "group", "save", "restore"}}, on its way.
class EffectTexts {
  public:
    // To be called while the process has one thread. Throws Failure.
    EffectTexts(const std::string& module, Language language);
    ~EffectTexts();
    EffectTexts(const EffectTexts&) = delete;
    EffectTexts& operator=(const EffectTexts&) = delete;

    // Waits for it; once only. Throws Failure (effect) with what went wrong there.
    [[nodiscard]] Json take();

  private:
    pid_t child_ = -1;
    int words_ = -1;
};

}  // namespace tool::panel
