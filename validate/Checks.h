#pragma once

#include <span>

#include "validate/Check.h"

namespace validate {

// The checks by subject, each list in its own file.
std::span<const Check> lifeChecks();
std::span<const Check> paramChecks();
std::span<const Check> commandChecks();
std::span<const Check> sequenceChecks();
std::span<const Check> settingsChecks();
std::span<const Check> frameChecks();
std::span<const Check> worldChecks();
std::span<const Check> hostChecks();
std::span<const Check> valueChecks();
std::span<const Check> faultChecks();
std::span<const Check> walkChecks();
std::span<const Check> threadChecks();
std::span<const Check> soakChecks();

}  // namespace validate
