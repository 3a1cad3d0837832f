// The property list of an effect's file, as a host reads it: without running any of its code.
#pragma once

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>

namespace standin {

// The file cannot be read or holds no property list; the text names the file.
struct PropertyListError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class PropertyList {
  public:
    // A path in UTF-8.
    static PropertyList ofFile(const std::string& path);
    // The bytes of the resource.
    static PropertyList parse(const std::string& bytes);

    std::size_t size() const { return properties_.size(); }
    // The data of a property by its four letters, with its padding. Throws PropertyListError when
    // there is none.
    const std::string& data(const std::string& key) const;
    std::uint32_t number(const std::string& key) const;
    std::string text(const std::string& key) const;  // up to its zero
    std::string name(const std::string& key) const;  // behind its length byte

  private:
    std::map<std::string, std::string> properties_;
};

}  // namespace standin
