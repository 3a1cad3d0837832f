// One page in a browser: one instance of the effect, with its panel. Changes go through the
// instance as a host sends them, so that greying and linked values are the module's own word;
// frames are drawn on copies, as hosts do it, so that a panel never waits for a picture. Safe from
// any thread.
#pragma once

#include <map>
#include <mutex>
#include <optional>

#include "Studio.h"

namespace tool::panel {

// Where frames are drawn for one purpose: a slot in the queue, and the instance for it.
struct Drawer {
    DrawSlot slot;
    std::optional<standin::Instance> instance;  // whose turn it is uses it
};

// A control as the user turned it.
struct Change {
    int param = 0;  // host index
    Json value;
    std::optional<double> turn;  // the page's own count of its changes
};

class Page {
  public:
    // `studio` must outlive it. Throws Failure.
    Page(Studio& studio, Values values, int frame);
    ~Page();
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    // The panel at that frame: values there, keys, what is greyed. Throws Failure.
    Json show(int frame);
    // As a user turns a control; a change that comes behind a newer one of its parameter is left
    // out. Throws Refusal, Failure.
    Json change(const Change& change, int frame);
    // As a project that is opened. Throws Failure.
    Json open(Values values, int frame);

    [[nodiscard]] Values values() const;
    [[nodiscard]] int frame() const;

    [[nodiscard]] Drawer& drawer(bool thumbnail) { return thumbnail ? thumbnail_ : main_; }
    // The page is gone: whoever draws for it leaves off.
    void close();

    // The options dialog with the values at the page's frame: makes them the defaults, or brings
    // the effect's own back. Throws Failure.
    void saveDefaults();
    void restoreDefaults();

  private:
    template <class Action>
    void changeDefaults(Action action);
    void goTo(int frame);
    void tellPanel();
    void adopt(const standin::ParamInfo& changed, const std::map<int, standin::Value>& before);
    [[nodiscard]] std::map<int, standin::Value> valuesNow() const;
    [[nodiscard]] Json stateNow() const;

    Studio& studio_;
    mutable std::mutex mutex_;  // of what follows; taken before that of the commands
    Values values_;
    int frame_;
    long opened_ = 0;
    std::map<int, double> turns_;  // of the newest change, by host index
    std::optional<standin::Instance> instance_;
    Drawer main_, thumbnail_;
};

}  // namespace tool::panel
