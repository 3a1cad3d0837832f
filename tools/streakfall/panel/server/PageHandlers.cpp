#include "Body.h"
#include "Handlers.h"
#include "LookFile.h"
#include "Pictures.h"

namespace tool::panel {

namespace {

constexpr int kMostReduced = 99;

Answer stateAnswer(Json state) { return jsonAnswer({{"state", std::move(state)}}); }

Change readChange(const Body& body, std::optional<double> turn) {
    const Json* value = body.find("value");
    if (value == nullptr) refuse(Status::kUnreadable, "the change has no \"value\"");
    return {body.whole("param", 1, 1 << 20), *value, turn};
}

const Look& lookOf(Studio& studio, const std::string& key) {
    const Look* look = studio.findLook(key);
    if (look == nullptr) refuse(Status::kMissing, "there is no look \"{}\"", key);
    return *look;
}

Backdrop readBackdrop(const Body& body) {
    const std::string name = body.text("backdrop", "input");
    if (name == "input") return Backdrop::kInput;
    if (name == "checker") return Backdrop::kChecker;
    if (name == "black") return Backdrop::kBlack;
    refuse(Status::kUnreadable, "\"backdrop\" is to be input, checker or black");
}

PictureRequest readRequest(const Body& body) {
    const std::string slot = body.text("slot", "main");
    if (slot != "main" && slot != "thumbnail")
        refuse(Status::kUnreadable, "\"slot\" is to be main or thumbnail");
    PictureRequest request;
    request.frame = body.frame();
    request.divisor = body.whole("divisor", 1, kMostReduced, 1);
    request.backdrop = readBackdrop(body);
    request.thumbnail = slot == "thumbnail";
    request.turn = body.number("turn");
    return request;
}

// What the request changes, done on the page for good; the panel goes to the picture's frame.
Json bringPanel(Studio& studio, Page& page, const Body& body, const PictureRequest& request) {
    const Json* change = body.find("change");
    const Json* state = body.find("state");
    if (change != nullptr && state != nullptr)
        refuse(Status::kUnreadable, "a picture takes \"change\" or \"state\", not both");
    if (change != nullptr)
        return page.change(readChange(Body(*change), request.turn), request.frame);
    if (state != nullptr) return page.open(studio.valuesOf(*state), request.frame);
    return page.show(request.frame);
}

// The page's values, or those of a look, with what is tried on them.
Values valuesFor(Studio& studio, const Page& page, const Body& body) {
    Values values = body.find("look") != nullptr
                        ? studio.valuesOf(lookOf(studio, body.text("look")))
                        : page.values();
    if (const Json* with = body.find("with"))
        values.apply({{"values", *with}}, studio.params(), studio.layer());
    return values;
}

}  // namespace

Answer openPage(PanelParts& parts, const Ask& ask, const std::string&) {
    const Body body(ask.body);
    Studio& studio = parts.studio;
    const Json* state = body.find("state");
    const int frame = body.frame(studio.frames()[0]);
    const auto page = std::make_shared<Page>(
        studio, state != nullptr ? studio.valuesOf(*state) : studio.openingValues(), frame);
    Json shown = page->show(frame);
    return jsonAnswer({{"page", parts.pages.add(page)}, {"state", std::move(shown)}},
                      Status::kCreated);
}

Answer showPage(PanelParts& parts, const Ask& ask, const std::string& name) {
    const auto page = parts.pages.find(name);
    const auto frame = frameOf(ask, "frame");
    return stateAnswer(page->show(frame.value_or(page->frame())));
}

Answer closePage(PanelParts& parts, const Ask&, const std::string& name) {
    parts.pages.remove(name);
    return jsonAnswer(Json::object());
}

Answer changeValue(PanelParts& parts, const Ask& ask, const std::string& name) {
    const auto page = parts.pages.find(name);
    const Body body(ask.body);
    return stateAnswer(page->change(readChange(body, body.number("turn")), body.frame()));
}

Answer putState(PanelParts& parts, const Ask& ask, const std::string& name) {
    const auto page = parts.pages.find(name);
    const Body body(ask.body);
    const Json* state = body.find("state");
    if (state == nullptr) refuse(Status::kUnreadable, "the request has no \"state\"");
    return stateAnswer(page->open(parts.studio.valuesOf(*state), body.frame(page->frame())));
}

Answer putLook(PanelParts& parts, const Ask& ask, const std::string& name) {
    const auto page = parts.pages.find(name);
    const Body body(ask.body);
    Studio& studio = parts.studio;
    Values values =
        body.find("text") != nullptr
            ? studio.valuesOf(readLookFile(body.text("name", "the look"), body.text("text")))
            : studio.valuesOf(lookOf(studio, body.text("key")));
    return stateAnswer(page->open(std::move(values), body.frame(page->frame())));
}

Answer sendPicture(PanelParts& parts, const Ask& ask, const std::string& name) {
    const auto page = parts.pages.find(name);
    const Body body(ask.body);
    Studio& studio = parts.studio;
    PictureRequest request = readRequest(body);
    if (body.flag("bare")) return barePicture(studio, request);
    if (!request.thumbnail)
        request.state = bringPanel(studio, *page, body, request);
    else if (body.find("change") != nullptr || body.find("state") != nullptr)
        refuse(Status::kUnreadable, "a thumbnail changes nothing: write \"with\"");
    return drawPicture(studio, *page, valuesFor(studio, *page, body), request);
}

}  // namespace tool::panel
