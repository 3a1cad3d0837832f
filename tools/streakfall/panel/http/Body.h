// The JSON object that a request carries, member by member. All that is missing or of another kind
// is a refusal that names it.
#pragma once

#include <optional>
#include <string>

#include "Exchange.h"

namespace tool::panel {

class Body {
  public:
    // An empty text is an empty object. Throws Refusal.
    explicit Body(const std::string& text);
    explicit Body(Json json);

    // Null when there is none, or when it is null.
    [[nodiscard]] const Json* find(const char* name) const;

    [[nodiscard]] int whole(const char* name, int least, int most) const;
    [[nodiscard]] int whole(const char* name, int least, int most, int otherwise) const;
    [[nodiscard]] std::optional<double> number(const char* name) const;
    [[nodiscard]] bool flag(const char* name) const;  // false when there is none
    [[nodiscard]] std::string text(const char* name) const;
    [[nodiscard]] std::string text(const char* name, const char* otherwise) const;

    // A frame that a key may have.
    [[nodiscard]] int frame() const;
    [[nodiscard]] int frame(int otherwise) const;

  private:
    [[nodiscard]] const Json& need(const char* name) const;

    Json object_;
};

// The same of what stands behind the address's question mark. Throws Refusal.
[[nodiscard]] std::optional<int> wholeOf(const Ask& ask, const std::string& name, int least,
                                         int most);
[[nodiscard]] std::optional<int> frameOf(const Ask& ask, const std::string& name);

}  // namespace tool::panel
