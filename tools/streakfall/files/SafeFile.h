// Writing a file so that nobody ever sees half of it: the bytes go to a temporary name in the
// same folder, reach the disk, and are renamed. On any failure the temporary file is removed and
// what stood under the name before stays.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace tool {

// Throws Failure (output) that names the file and what the system said.
void writeWhole(const std::string& path, std::span<const std::byte> bytes);

// Throws Failure (output) when a file could not be put there: no such folder, no permission, or
// something other than a plain file under that name.
void checkWritable(const std::string& path);

}  // namespace tool
