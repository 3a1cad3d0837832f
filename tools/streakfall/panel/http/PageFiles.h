// The files of the page, which the program carries inside itself.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Exchange.h"

namespace tool::panel {

struct PageFile {
    std::string_view name;  // below the page's folder, "rooms/name.js"
    std::string_view text;
};

// Made when the program is built.
[[nodiscard]] std::span<const PageFile> pageFiles();

class PageFolder {
  public:
    // With a folder, its files as they are on the disk; for work on the page. Empty: those inside.
    explicit PageFolder(std::string folder) : folder_(std::move(folder)) {}

    // "" is index.html. Only names that are in the list, of the program or of the folder, are
    // found. Throws Refusal.
    [[nodiscard]] Answer file(std::string name) const;

  private:
    [[nodiscard]] std::optional<std::string> textOf(const std::string& name) const;

    std::string folder_;
};

}  // namespace tool::panel
