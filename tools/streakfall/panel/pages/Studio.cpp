#include "Studio.h"

#include <algorithm>
#include <filesystem>

#include "PictureReader.h"
#include "RenderPlan.h"

namespace tool::panel {

namespace {

// As a render of that input would take it.
RenderOptions renderOptions(const StudioOptions& options) {
    RenderTexts texts;
    texts.input = options.input;
    texts.layer = options.imageLayer;
    if (options.input.empty()) texts.size = options.size;
    texts.output = "####.png";
    return RenderOptions(texts);
}

}  // namespace

Studio::Studio(const StudioOptions& options)
    : options_(options),
      session_(options.module, Defaults::kStored),
      ownParams_(session_.announcedNow(Defaults::kOwn)) {
    findInput();
    findLooks();
    backdrops_ = std::make_unique<Backdrops>(input_ ? std::optional(input_->pattern) : std::nullopt,
                                             options_.imageLayer, layer_);
}

void Studio::findInput() {
    const RenderOptions render = renderOptions(options_);
    const RunForm form = planForm(render);
    layer_ = render.input ? form.size : render.size;
    rate_ = form.rate;
    if (!render.input) return;
    // What hinders the first frame is better said now than on the page.
    const auto [least, most] = std::minmax_element(render.frames.begin(), render.frames.end());
    (void)readTraits(render.input->fileFor(*least), {options_.imageLayer, {}});
    input_ = InputInfo{*render.input, static_cast<int>(render.frames.size())};
    if (render.input->hasNumber()) frames_ = {*least, *most};
}

void Studio::findLooks() {
    if (!options_.look.empty() && findShippedLook(options_.look) == nullptr) {
        Look look = loadLook(options_.look);
        look.key = std::filesystem::path(options_.look).filename().string();
        if (findShippedLook(look.key) != nullptr) look.key += " (file)";
        options_.look = look.key;
        looks_.push_back(std::move(look));
    }
    looks_.insert(looks_.end(), shippedLooks().begin(), shippedLooks().end());
    if (const Look* look = openingLook()) (void)valuesOf(*look);
}

const Look* Studio::findLook(const std::string& key) const {
    const auto found = std::find_if(looks_.begin(), looks_.end(),
                                    [&](const Look& look) { return look.key == key; });
    return found == looks_.end() ? nullptr : &*found;
}

const Look* Studio::openingLook() const { return findLook(options_.look); }

Values Studio::openingValues() {
    if (const Look* look = openingLook()) return valuesOf(*look);
    return Values(params(), layer_);
}

Values Studio::valuesOf(const Look& look) {
    ParamTexts texts;
    texts.readLooks.push_back(look);
    Values values(ownParams_, layer_);
    values.apply(session_.readArguments(texts), layer_);
    return values;
}

Values Studio::valuesOf(const Json& state) {
    Values values(params(), layer_);
    values.apply(state, params(), layer_);
    return values;
}

}  // namespace tool::panel
