// Who may talk to the panel: a page that was opened by the printed address. The server is on the
// loopback address, where every program and every web page in the user's browser can reach it, so
// each request must carry the token, be sent to this very host and port (a foreign name may be
// pointed at the loopback address), and come from no other page.
#pragma once

#include <cstddef>
#include <string>

#include "Exchange.h"

namespace tool::panel {

inline constexpr std::size_t kMostBodyBytes = 1u << 20;

// 128 random bits. Throws Failure (effect) when the system has none.
[[nodiscard]] std::string randomName();

// The token that the variable STREAKFALL_PANEL_TOKEN gives, for an address that stays the same when
// the program is started again, and takes the variable away; else a random one. Throws Failure
// (usage) for one that is too short to be secret, or has letters that change in an address.
[[nodiscard]] std::string chooseToken();

class Guard {
  public:
    explicit Guard(std::string token) : token_(std::move(token)) {}

    // To be called once the port is known, before the first request.
    void servesAt(int port) { port_ = port; }

    // What can be judged before the body is read, and must be: a body of unknown length, or one
    // that grows when it is unpacked, has no bound. Throws Refusal.
    static void checkHead(const Ask& ask);

    // The rest. Returns the path behind the token, without its slash. Throws Refusal.
    [[nodiscard]] std::string admit(const Ask& ask) const;

    [[nodiscard]] std::string address() const;

  private:
    void checkSender(const Ask& ask) const;

    std::string token_;
    int port_ = 0;
};

}  // namespace tool::panel
