// A file name with room for the frame number: "%d", "%04d", a run of two or more "#", such a run in
// brackets, "[####]", or a run of "@". The number is padded with zeros to the run's length, a minus
// sign counted, as printf does. "%%" stands for one percent sign, and any other "%" for itself. The
// folder is taken as it is written.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

class FilePattern {
  public:
    // `option` is the option the text came from, for the messages. Throws Failure (usage) for a
    // lone "#", which is one digit in some programs and four in others.
    FilePattern(std::string_view text, std::string_view option);

    [[nodiscard]] bool hasNumber() const { return !numbers_.empty(); }
    [[nodiscard]] std::string fileFor(int frame) const;
    [[nodiscard]] const std::string& text() const { return text_; }
    // The frames whose files are there, ascending; none without a number in the name. Numbers past
    // `last` on either side are left out.
    [[nodiscard]] std::vector<int> framesOnDisk(int last) const;

  private:
    [[nodiscard]] std::optional<int> frameOf(const std::string& name) const;

    std::string text_;
    std::string folder_;                 // with its slash
    std::vector<std::string> literals_;  // one more than numbers_, around and between them
    std::vector<int> numbers_;           // the least width of each number
};

}  // namespace tool
