#include "PropertyListReader.h"

#include <windows.h>

#include <algorithm>

#include "host/PathText.h"

namespace standin {

namespace {

constexpr int kPropertyListId = 16000;

// Takes a list apart from front to back.
class Reader {
  public:
    explicit Reader(const std::string& bytes) : bytes_(bytes) {}

    std::string take(std::size_t length) {
        if (length > bytes_.size() - at_)
            throw PropertyListError("the property list ends too early");
        at_ += length;
        return bytes_.substr(at_ - length, length);
    }
    std::uint32_t number(std::size_t length) {
        std::uint32_t value = 0;
        const std::string digits = take(length);
        for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
            value = value << 8 | static_cast<std::uint8_t>(*digit);
        }
        return value;
    }
    std::string fourLetters() {
        std::string word = take(4);
        std::ranges::reverse(word);
        return word;
    }
    bool atEnd() const { return at_ == bytes_.size(); }

  private:
    const std::string& bytes_;
    std::size_t at_ = 0;
};

}  // namespace

PropertyList PropertyList::ofFile(const std::string& path) {
    const HMODULE file = LoadLibraryExW(fileAt(path).c_str(), nullptr,
                                        LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    if (file == nullptr) throw PropertyListError("cannot read \"" + path + "\"");
    std::string bytes;
    const HRSRC place = FindResourceW(file, MAKEINTRESOURCEW(kPropertyListId), L"PIPL");
    if (place != nullptr) {
        const auto* first = static_cast<const char*>(LockResource(LoadResource(file, place)));
        bytes.assign(first, SizeofResource(file, place));
    }
    FreeLibrary(file);
    if (bytes.empty()) throw PropertyListError("\"" + path + "\" has no property list");
    return parse(bytes);
}

PropertyList PropertyList::parse(const std::string& bytes) {
    PropertyList list;
    Reader reader(bytes);
    if (reader.number(2) != 1 || reader.number(4) != 0) {
        throw PropertyListError("the property list has another form");
    }
    for (std::uint32_t left = reader.number(4); left > 0; --left) {
        if (reader.fourLetters() != "8BIM") throw PropertyListError("a property of another vendor");
        const std::string key = reader.fourLetters();
        reader.number(4);
        const std::size_t length = reader.number(4);
        list.properties_[key] = reader.take((length + 3) / 4 * 4);
    }
    if (!reader.atEnd()) throw PropertyListError("bytes behind the last property");
    return list;
}

const std::string& PropertyList::data(const std::string& key) const {
    const auto found = properties_.find(key);
    if (found == properties_.end()) throw PropertyListError("no property " + key);
    return found->second;
}

std::uint32_t PropertyList::number(const std::string& key) const {
    return Reader(data(key)).number(4);
}

std::string PropertyList::text(const std::string& key) const { return data(key).c_str(); }

std::string PropertyList::name(const std::string& key) const {
    return data(key).substr(1, static_cast<std::uint8_t>(data(key).at(0)));
}

}  // namespace standin
