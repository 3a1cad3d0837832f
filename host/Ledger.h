#pragma once

#include <array>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace standin {

// What the host lends and wants back.
enum class Loan {
    handle,
    handleLock,
    world,
    suite,
    param,
    layerPixels,
    preRenderData,
    count_,
};
inline constexpr int kLoans = static_cast<int>(Loan::count_);

std::string_view name(Loan loan);

// Live loans of each sort at one moment.
using Balance = std::array<long, kLoans>;

// The host's books: what is out on loan, and which rules were broken. Owner: the host. Safe from
// any thread.
class Ledger {
  public:
    // `which` names the thing in words, for reports: a suite's name and number, a parameter's name.
    void lend(Loan loan, const std::string& which = {});
    void giveBack(Loan loan, const std::string& which = {});
    void violation(std::string what);

    long live(Loan loan) const;
    long total(Loan loan) const;  // ever lent
    Balance balance() const;

    // In words what is out on loan, empty when nothing is.
    std::string unbalanced() const;
    // In words what is out now beyond `before`, and what is missing from it; empty when nothing.
    // Suites that the module keeps for later commands show here after its first frames.
    std::string changedSince(const Balance& before) const;

    std::vector<std::string> violations() const;
    // One text a line; empty when no rule was broken.
    std::string violationText() const;
    void clearViolations();

  private:
    struct Account {
        std::map<std::string, long> out;
        long live = 0;
        long total = 0;
    };
    mutable std::mutex mutex_;
    std::array<Account, kLoans> accounts_;
    std::vector<std::string> violations_;
};

}  // namespace standin
