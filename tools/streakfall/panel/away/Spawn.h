// Starting other programs. They get nothing of this process but its environment and folder: no open
// file, no connection of a browser, nothing to read.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace tool::panel {

// `arguments` begins with the program's path, or its name to be looked up. What it says on standard
// error goes to `errors`, unless that is -1. The caller waits for it. Throws Failure (effect).
[[nodiscard]] pid_t spawn(const std::vector<std::string>& arguments, int errors = -1);

// Shows the address in the user's browser, as far as the machine has one.
void openBrowser(const std::string& address);

}  // namespace tool::panel
