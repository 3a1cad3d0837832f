// The effect's options dialog, with this program as the user.
#pragma once

#include <string>

#include "host/Instance.h"

namespace tool {

class OptionsDialog {
  public:
    // The instance must outlive it; its values at the panel's time are what is saved.
    explicit OptionsDialog(standin::Instance& instance) : instance_(instance) {}

    // Opens and closes it, to see what it shows; the texts are in the effect's code page
    // (shownText). Throws Failure (effect).
    const StandinDialogWindow& look();
    // By the first button, into that file. Throws Failure (effect, or output when the values did
    // not reach the file).
    void save(const std::string& file);
    // By the second button, which removes that file. Throws Failure likewise.
    void restore(const std::string& file);

  private:
    void leaveBy(A_long control);
    void checkSaved(const std::string& file);

    standin::Instance& instance_;
};

}  // namespace tool
