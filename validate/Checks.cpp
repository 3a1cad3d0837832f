#include "validate/Checks.h"

#include <algorithm>
#include <vector>

namespace validate {
namespace {

std::vector<Check> collect() {
    std::vector<Check> all;
    for (const auto& list :
         {lifeChecks(), paramChecks(), commandChecks(), sequenceChecks(), settingsChecks(),
          frameChecks(), worldChecks(), hostChecks(), valueChecks(), faultChecks(), walkChecks(),
          threadChecks(), soakChecks()}) {
        all.insert(all.end(), list.begin(), list.end());
    }
    std::ranges::stable_sort(all, {}, &Check::level);
    return all;
}

}  // namespace

std::span<const Check> allChecks() {
    static const std::vector<Check> all = collect();
    return all;
}

}  // namespace validate
