// Who is turned away, and that nothing beyond what the command line named can be had.
#include <functional>

#include "PanelFixture.h"

namespace tool::panel {

namespace {

TEST_F(PanelTest, OnlyThePageThatWasOpenedIsServed) {
    open();
    const Ask good = asking("GET", "api/about", {});
    EXPECT_EQ(panel_->answer(good).status, Status::kOk);

    struct Case {
        const char* what;
        Status status;
        std::function<void(Ask&)> spoil;
    };
    const auto header = [](const char* name, const char* value) {
        return [=](Ask& ask) {
            ask.headers.erase(name);
            ask.headers.emplace(name, value);
        };
    };
    const Case cases[] = {
        {"no token", Status::kForbidden, [](Ask& ask) { ask.path = "/api/about"; }},
        {"half a token", Status::kForbidden, [](Ask& ask) { ask.path.erase(3, 1); }},
        {"a longer token", Status::kForbidden, [](Ask& ask) { ask.path.insert(3, "x"); }},
        {"no path", Status::kForbidden, [](Ask& ask) { ask.path = ""; }},
        {"no host", Status::kForbidden, [](Ask& ask) { ask.headers.erase("host"); }},
        {"two hosts", Status::kForbidden,
         [](Ask& ask) { ask.headers.emplace("host", "127.0.0.1:4711"); }},
        {"a foreign name", Status::kForbidden, header("host", "evil.example:4711")},
        {"another port", Status::kForbidden, header("host", "127.0.0.1:80")},
        {"a foreign page", Status::kForbidden, header("origin", "http://evil.example")},
        {"a file's page", Status::kForbidden, header("origin", "null")},
        {"another server's page", Status::kForbidden, header("origin", "http://127.0.0.1:80")},
        {"a foreign link", Status::kForbidden, header("sec-fetch-site", "cross-site")},
        {"unknown length", Status::kUnreadable, header("transfer-encoding", "chunked")},
        {"packed", Status::kUnreadable, header("content-encoding", "gzip")},
        {"no length", Status::kUnreadable, header("content-length", "-5")},
        {"far too long", Status::kTooLarge, header("content-length", "99999999999999999999")},
        {"a long address", Status::kTooLong, [](Ask& ask) { ask.path += std::string(600, 'a'); }},
        {"too large after all", Status::kTooLarge,
         [](Ask& ask) { ask.body.assign(kMostBodyBytes + 1, ' '); }},
        {"another method", Status::kMethod, [](Ask& ask) { ask.method = "DELETE"; }},
    };
    for (const Case& each : cases) {
        Ask ask = good;
        each.spoil(ask);
        const Answer answer = panel_->answer(ask);
        EXPECT_EQ(static_cast<int>(answer.status), static_cast<int>(each.status)) << each.what;
        EXPECT_FALSE(Json::parse(answer.text).value("error", "").empty()) << each.what;
        EXPECT_NE(answer.headers.find("Content-Security-Policy"), answer.headers.end());
    }
    Ask form = asking("POST", "api/pages", Json::object());
    header("content-type", "text/plain")(form);  // what another page may send unasked
    EXPECT_EQ(panel_->answer(form).status, Status::kKind);
    EXPECT_EQ(panel_->pages().count(), 0u);
    Ask own = good;
    own.headers.emplace("origin", "http://127.0.0.1:4711");
    EXPECT_EQ(panel_->answer(own).status, Status::kOk);
}

TEST_F(PanelTest, NothingElseOnTheDiskIsServed) {
    std::ofstream(path("secret.js")) << "secret";
    std::ofstream(path("secret.json")) << "{\"values\": {\"Taper\": 60}}";
    fs::create_directories(path("page/rooms"));
    std::ofstream(path("page/index.html")) << "the page";
    std::ofstream(path("page/rooms/a.js")) << "a room";
    const std::string outside[] = {"../secret.js",
                                   "rooms/../../secret.js",
                                   path("secret.js"),
                                   "/" + path("secret.js"),
                                   "..",
                                   "rooms/",
                                   "./index.html",
                                   "rooms//a.js",
                                   "secret.js"};
    for (const char* folder : {"", "page"}) {
        options_.pageFolder = *folder == '\0' ? "" : path(folder);
        open();
        for (const std::string& name : outside)
            EXPECT_NE(refusal(Status::kMissing, "GET", name), "") << name;
    }
    EXPECT_EQ(send("GET", "").text, "the page");
    EXPECT_EQ(send("GET", "rooms/a.js").text, "a room");

    // A look is a key or a text, never a path; an input is a number.
    const std::string page = openPage();
    refusal(Status::kMissing, "POST", page + "/look", {{"key", path("secret.json")}});
    refusal(Status::kUnreadable, "POST", page + "/look",
            {{"name", path("secret.json")}, {"text", ""}});
    refusal(Status::kMissing, "POST", page + "/picture",
            {{"frame", 0}, {"slot", "thumbnail"}, {"look", path("secret.json")}});
    refusal(Status::kUnreadable, "POST", page + "/picture", {{"frame", "../secret"}});
}

TEST_F(PanelTest, WhatCannotBeReadIsNamed) {
    open();
    const std::string page = openPage();
    const Json before = get(page)["state"];
    const struct {
        const char *path, *body, *named;
    } cases[] = {
        {"/change", "{,}", "not JSON at line 1, column 2"},
        {"/change", "[1]", "JSON object"},
        {"/change", "{\"param\": 1, \"param\": 2}", "\"param\" is given twice"},
        {"/change", "{\"param\": 11, \"frame\": 0}", "\"value\""},
        {"/change", "{\"param\": 11, \"value\": 1}", "\"frame\""},
        {"/change", "{\"param\": 11, \"value\": \"much\", \"frame\": 0}", "\"Thickness\""},
        {"/change", "{\"param\": 11, \"value\": 1, \"frame\": 1e99}", "\"frame\""},
        {"/change", "{\"param\": 11, \"value\": 1e999, \"frame\": 0}", "too large"},
        {"/change", "{\"param\": 6, \"value\": 1, \"frame\": 0}", "at 6"},
        {"/change", "{\"param\": -1, \"value\": 1, \"frame\": 0}", "\"param\""},
        {"/change", "{\"param\": 1, \"value\": [40000, 1], \"frame\": 0}", "\"Start Point\""},
        {"/change", "{\"param\": 5, \"value\": \"#12345\", \"frame\": 0}", "\"Color\""},
        {"/picture", "{\"frame\": 0, \"divisor\": 0}", "\"divisor\""},
        {"/picture", "{\"frame\": 0, \"slot\": \"third\"}", "\"slot\""},
        {"/picture", "{\"frame\": 0, \"backdrop\": \"red\"}", "\"backdrop\""},
        {"/picture", "{\"frame\": 0, \"with\": {\"x\": 1}, \"slot\": \"thumbnail\"}", "at 0"},
        {"/look", "{\"text\": \"{\\\"Taper\\\": \\\"much\\\"}\"}", "\"Taper\""},
        {"/look", "{\"text\": \"{\\\"Nothing\\\": 1}\"}", "\"Nothing\""},
        {"/defaults", "{\"action\": \"burn\"}", "\"action\""},
        {"/render", "{\"first\": 5, \"last\": 4}", "before the first"},
        {"/render", "{\"first\": 0, \"last\": 1000000}", "more than"},
    };
    for (const auto& each : cases) {
        Ask ask = asking("POST", page + each.path, Json::object());
        ask.body = each.body;
        const Answer answer = panel_->answer(ask);
        EXPECT_EQ(static_cast<int>(answer.status), 400) << each.body;
        const std::string sentence = Json::parse(answer.text).value("error", "");
        EXPECT_NE(sentence.find(each.named), std::string::npos) << each.body << ": " << sentence;
    }
    // Deeper than any stack would take.
    Ask deep = asking("POST", page + "/look", Json::object());
    deep.body = std::string(300'000, '[') + std::string(300'000, ']');
    EXPECT_EQ(panel_->answer(deep).status, Status::kUnreadable);
    deep.body = Json{{"text", deep.body}}.dump();
    EXPECT_EQ(panel_->answer(deep).status, Status::kUnreadable);
    EXPECT_EQ(get(page)["state"], before);
}

}  // namespace

}  // namespace tool::panel
