// Writing a file so that nobody ever sees half of it: the bytes go to a temporary name in the
// same folder, reach the disk, and are renamed. On any failure the temporary file is removed and
// what stood under the name before stays. The temporary name, ".NAME.HOST-RANDOM.part", is made
// exclusively, so that runs on several machines may write the same files into one folder.
#pragma once

#include <cstddef>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace tool {

// Throws Failure (output) that names the file and what the system said. Safe from any thread.
void writeWhole(const std::string& path, std::span<const std::byte> bytes);

// Throws Failure (output) when a file could not be put there: no such folder, no permission, or
// something other than a plain file under that name.
void checkWritable(const std::string& path);

// Removes what killed runs left of files of these names in the folder, when it is at least a day
// old, and tells the paths.
std::vector<std::string> clearLeftovers(const std::string& folder,
                                        const std::set<std::string>& names);

// Removes the temporary files that are being written, for a program that ends at once. May be
// called in a signal handler.
void dropTemporaries() noexcept;

}  // namespace tool
