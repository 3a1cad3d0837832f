// A panel without a socket: asked as its server asks it, with the effect's module copied into a
// folder of the test's own, since saved defaults go beside the module.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "Panel.h"
#include "PictureReader.h"
#include "PictureWriter.h"

namespace tool::panel {

namespace fs = std::filesystem;

using standin::Depth;
using standin::Image;

inline constexpr int kPort = 4711;
inline constexpr char kToken[] = "0123456789abcdef";

inline std::string contentOf(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// A picture that a page got.
struct Shown {
    Json head;
    Image image;
};

class PanelTest : public testing::Test {
  protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() /
                  ("streakfall-panel-" + std::to_string(getpid()) + "-" +
                   testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::create_directories(folder_ / "out");
        fs::copy_file(STREAKFALL_MODULE, folder_ / "effect.so");
        options_.studio.module = path("effect.so");
        options_.studio.size = "96x64";
        options_.program = STREAKFALL_PROGRAM;
        options_.output = path("out");
    }
    void TearDown() override {
        panel_.reset();
        fs::remove_all(folder_);
    }

    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    // With what stands in options_.
    Panel& open() {
        const Json texts = {{"about", "words"}, {"dialog", Json::object()}};
        panel_ =
            std::make_unique<Panel>(options_, Guard(kToken), Json{{"en", texts}, {"ja", texts}});
        panel_->guard().servesAt(kPort);
        return *panel_;
    }
    // Half of it clear, and no two rows alike.
    void makeInput(const std::string& name, int shift = 0) const {
        Image image(96, 64, Depth::bits8);
        for (int y = 0; y < 64; ++y)
            for (int x = 0; x < 96; ++x)
                image.row<PF_Pixel>(y)[x] = {static_cast<A_u_char>(x < 48 ? 255 : 2 * x + shift),
                                             static_cast<A_u_char>(4 * y), 90,
                                             static_cast<A_u_char>(x + shift)};
        writePicture(path(name), image);
    }

    static Ask asking(const std::string& method, const std::string& path, const Json& body) {
        Ask ask{method,
                "/" + std::string(kToken) + "/" + path,
                {{"host", "127.0.0.1:" + std::to_string(kPort)}},
                {},
                ""};
        const auto mark = ask.path.find('?');
        if (mark != std::string::npos) {
            std::string query = ask.path.substr(mark + 1);
            ask.path.resize(mark);
            for (std::size_t at = 0; at < query.size();) {
                const auto end = std::min(query.find('&', at), query.size());
                const auto equals = query.find('=', at);
                ask.query[query.substr(at, equals - at)] =
                    query.substr(equals + 1, end - equals - 1);
                at = end + 1;
            }
        }
        if (method == "POST" || method == "PUT") {
            ask.headers.emplace("content-type", "application/json");
            ask.body = body.dump();
        }
        return ask;
    }
    Answer send(const std::string& method, const std::string& path, const Json& body = {}) {
        return panel_->answer(asking(method, path, body.is_null() ? Json::object() : body));
    }
    // The answer's JSON; the status must be that.
    Json get(Status status, const std::string& method, const std::string& path,
             const Json& body = {}) {
        const Answer answer = send(method, path, body);
        EXPECT_EQ(static_cast<int>(answer.status), static_cast<int>(status))
            << method << " " << path << ": " << answer.text;
        return Json::parse(answer.text, nullptr, false);
    }
    Json get(const std::string& path) { return get(Status::kOk, "GET", path); }
    // The sentence of a refusal.
    std::string refusal(Status status, const std::string& method, const std::string& path,
                        const Json& body = {}) {
        return get(status, method, path, body).value("error", "");
    }

    // Opens a page and returns its address.
    std::string openPage(const Json& body = Json::object()) {
        const Json opened = get(Status::kCreated, "POST", "api/pages", body);
        return "api/pages/" + opened.value("page", "");
    }
    int index(const std::string& name) {
        const standin::ParamInfo* param = panel_->studio().session().host().param(name);
        EXPECT_NE(param, nullptr) << name;
        return param == nullptr ? 0 : param->index;
    }
    std::string key(const std::string& name) { return std::to_string(index(name)); }
    // The state behind the change.
    Json change(const std::string& page, const std::string& name, const Json& value,
                int frame = 0) {
        return get(Status::kOk, "POST", page + "/change",
                   {{"param", index(name)}, {"value", value}, {"frame", frame}})["state"];
    }
    void changeAll(const std::string& page, const Json& values, int frame = 0) {
        for (const auto& [name, value] : values.items()) change(page, name, value, frame);
    }
    Shown picture(const std::string& page, const Json& request) {
        return shown(send("POST", page + "/picture", request));
    }
    static Shown shown(const Answer& answer) {
        EXPECT_EQ(static_cast<int>(answer.status), 200) << answer.text;
        Shown result{Json::parse(answer.text, nullptr, false), {}};
        if (answer.status != Status::kOk) return result;
        result.image = Image(result.head.at("width"), result.head.at("height"), Depth::bits8);
        EXPECT_EQ(answer.bytes.size(), result.image.size());
        EXPECT_EQ(answer.headers.at("X-Head-Bytes"), std::to_string(answer.text.size()));
        const auto* from = reinterpret_cast<const A_u_char*>(answer.bytes.data());
        for (int y = 0; y < result.image.height(); ++y)
            for (int x = 0; x < result.image.width(); ++x, from += 4)
                result.image.row<PF_Pixel>(y)[x] = {from[3], from[0], from[1], from[2]};
        return result;
    }
    // The page's own line, run in a shell with what is put behind it.
    void runCommand(std::string command, const std::string& behind) {
        ASSERT_EQ(command.rfind("streakfall ", 0), 0u) << command;
        command.replace(0, std::strlen("streakfall"), STREAKFALL_PROGRAM);
        ASSERT_EQ(std::system((command + " -q " + behind).c_str()), 0) << command;
    }

    fs::path folder_;
    PanelOptions options_;
    std::unique_ptr<Panel> panel_;
};

// Seconds of work at 1920 x 1080, with a question to the host at each tenth.
inline const Json kSlow = {{"Thickness", 300}, {"Length", 2000}, {"Density of Lines", 1000}};

// Values of which each shows in a picture, from a seed.
inline Json dialled(unsigned seed) {
    return {{"Taper", seed * 13 % 90},
            {"Thickness", 1 + seed % 7},
            {"Random Seed", 100 + seed},
            {"Color", seed % 2 == 0 ? "#ff8000" : "#2040ff"},
            {"Clear Background", seed % 3 == 0},
            {"H", seed % 4 * 40},
            {"Start Point", {10.5 + seed, 20.25}}};
}

}  // namespace tool::panel
