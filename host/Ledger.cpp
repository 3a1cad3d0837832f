#include "host/Ledger.h"

namespace standin {
namespace {

constexpr std::string_view kNames[] = {
    "handle",       "handle lock",     "world", "suite", "checked-out parameter",
    "layer pixels", "pre-render data",
};
static_assert(std::size(kNames) == kLoans);

void append(std::string& text, const std::string& part) {
    if (!text.empty()) {
        text += "; ";
    }
    text += part;
}

std::string counted(std::string_view what, const std::string& which, long count) {
    std::string text(what);
    if (!which.empty()) {
        text += " " + which;
    }
    return text + ": " + std::to_string(count);
}

}  // namespace

std::string_view name(Loan loan) { return kNames[static_cast<int>(loan)]; }

void Ledger::lend(Loan loan, const std::string& which) {
    const std::lock_guard lock(mutex_);
    Account& account = accounts_[static_cast<int>(loan)];
    ++account.out[which];
    ++account.live;
    ++account.total;
}

void Ledger::giveBack(Loan loan, const std::string& which) {
    const std::lock_guard lock(mutex_);
    Account& account = accounts_[static_cast<int>(loan)];
    const auto found = account.out.find(which);
    if (found == account.out.end() || found->second == 0) {
        violations_.push_back(std::string(name(loan)) + " " + which +
                              " given back without being lent");
        return;
    }
    --found->second;
    --account.live;
}

void Ledger::violation(std::string what) {
    const std::lock_guard lock(mutex_);
    violations_.push_back(std::move(what));
}

long Ledger::live(Loan loan) const {
    const std::lock_guard lock(mutex_);
    return accounts_[static_cast<int>(loan)].live;
}

long Ledger::total(Loan loan) const {
    const std::lock_guard lock(mutex_);
    return accounts_[static_cast<int>(loan)].total;
}

Balance Ledger::balance() const {
    const std::lock_guard lock(mutex_);
    Balance balance{};
    for (int i = 0; i < kLoans; ++i) {
        balance[i] = accounts_[i].live;
    }
    return balance;
}

std::string Ledger::unbalanced() const {
    const std::lock_guard lock(mutex_);
    std::string text;
    for (int i = 0; i < kLoans; ++i) {
        for (const auto& [which, count] : accounts_[i].out) {
            if (count != 0) {
                append(text, counted(kNames[i], which, count) + " not given back");
            }
        }
    }
    return text;
}

std::string Ledger::changedSince(const Balance& before) const {
    const Balance now = balance();
    std::string text;
    for (int i = 0; i < kLoans; ++i) {
        if (now[i] != before[i]) {
            const long change = now[i] - before[i];
            append(text, counted(kNames[i], {}, change) + (change > 0 ? " more" : " fewer") +
                             " than before");
        }
    }
    return text;
}

std::vector<std::string> Ledger::violations() const {
    const std::lock_guard lock(mutex_);
    return violations_;
}

std::string Ledger::violationText() const {
    std::string text;
    for (const std::string& violation : violations()) {
        text += violation + "\n";
    }
    return text;
}

void Ledger::clearViolations() {
    const std::lock_guard lock(mutex_);
    violations_.clear();
}

}  // namespace standin
