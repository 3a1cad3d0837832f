#include "Body.h"

#include <cmath>

#include "FrameList.h"
#include "JsonText.h"
#include "Text.h"

namespace tool::panel {

namespace {

[[noreturn]] void unreadable(const std::string& name, const std::string& wanted) {
    refuse(Status::kUnreadable, "\"{}\" is to be {}", name, wanted);
}

int wholeFrom(double number, const std::string& name, int least, int most) {
    if (!(number >= least && number <= most) || number != std::floor(number))
        unreadable(name, fmt::format("a whole number from {} to {}", least, most));
    return static_cast<int>(number);
}

}  // namespace

Body::Body(const std::string& text) : Body(text.empty() ? Json::object() : parseJson(text)) {}

Body::Body(Json json) : object_(std::move(json)) {
    if (!object_.is_object()) refuse(Status::kUnreadable, "the request is to be a JSON object");
}

const Json* Body::find(const char* name) const {
    const auto found = object_.find(name);
    return found == object_.end() || found->is_null() ? nullptr : &*found;
}

const Json& Body::need(const char* name) const {
    const Json* found = find(name);
    if (found == nullptr) refuse(Status::kUnreadable, "the request has no \"{}\"", name);
    return *found;
}

int Body::whole(const char* name, int least, int most) const {
    const Json& value = need(name);
    return wholeFrom(value.is_number() ? value.get<double>() : NAN, name, least, most);
}

int Body::whole(const char* name, int least, int most, int otherwise) const {
    return find(name) == nullptr ? otherwise : whole(name, least, most);
}

std::optional<double> Body::number(const char* name) const {
    const Json* value = find(name);
    if (value == nullptr) return std::nullopt;
    if (!value->is_number()) unreadable(name, "a number");
    return value->get<double>();
}

bool Body::flag(const char* name) const {
    const Json* value = find(name);
    if (value == nullptr) return false;
    if (!value->is_boolean()) unreadable(name, "true or false");
    return value->get<bool>();
}

std::string Body::text(const char* name) const {
    const Json& value = need(name);
    if (!value.is_string()) unreadable(name, "a text");
    return value.get<std::string>();
}

std::string Body::text(const char* name, const char* otherwise) const {
    return find(name) == nullptr ? otherwise : text(name);
}

int Body::frame() const { return whole("frame", -kLastFrame, kLastFrame); }

int Body::frame(int otherwise) const { return whole("frame", -kLastFrame, kLastFrame, otherwise); }

std::optional<int> wholeOf(const Ask& ask, const std::string& name, int least, int most) {
    const auto found = ask.query.find(name);
    if (found == ask.query.end()) return std::nullopt;
    const auto number = parseNumber(found->second);
    return wholeFrom(number.value_or(NAN), name, least, most);
}

std::optional<int> frameOf(const Ask& ask, const std::string& name) {
    return wholeOf(ask, name, -kLastFrame, kLastFrame);
}

}  // namespace tool::panel
