#include "Layers.h"

#include <algorithm>
#include <vector>

#include "Failure.h"
#include "Text.h"

namespace tool {

namespace {

// The channels of one part whose names begin alike.
struct Layer {
    int part = 0;
    std::string name;  // empty: the picture's own channels
    std::string partName;
    std::vector<std::string> channels;  // without the layer's name
    std::vector<int> places;

    [[nodiscard]] int find(std::initializer_list<const char*> names) const {
        for (std::size_t i = 0; i < channels.size(); ++i)
            for (const char* one : names)
                if (lowered(channels[i]) == one) return places[i];
        return -1;
    }
    [[nodiscard]] bool hasColours() const {
        return find({"r", "red"}) >= 0 && find({"g", "green"}) >= 0 && find({"b", "blue"}) >= 0;
    }
    [[nodiscard]] bool isPicture() const { return hasColours() || find({"y"}) >= 0; }
    [[nodiscard]] bool isOwn() const {
        const std::string low = lowered(name);
        return name.empty() || low == "rgba" || low == "rgb";
    }
    [[nodiscard]] bool isCalled(const std::string& wanted) const {
        const std::string low = lowered(wanted);
        return low == lowered(name) || (name.empty() && low == lowered(partName)) ||
               (isOwn() && low == "rgba" && partName.empty());
    }
    [[nodiscard]] std::string shownName() const {
        if (!name.empty()) return name;
        return partName.empty() ? "rgba" : partName;
    }
    [[nodiscard]] std::string shown() const {
        std::string list;
        for (const std::string& channel : channels) list += (list.empty() ? "" : ",") + channel;
        return fmt::format("{} ({})", shownName(), list);
    }
};

void addChannel(std::vector<Layer>& layers, int part, const std::string& partName,
                const std::string& channel, int place) {
    const auto dot = channel.rfind('.');
    const std::string name = dot == std::string::npos ? "" : channel.substr(0, dot);
    auto found = std::find_if(layers.begin(), layers.end(), [&](const Layer& layer) {
        return layer.part == part && layer.name == name;
    });
    if (found == layers.end()) found = layers.insert(layers.end(), {part, name, partName, {}, {}});
    found->channels.push_back(dot == std::string::npos ? channel : channel.substr(dot + 1));
    found->places.push_back(place);
}

std::vector<Layer> layersOf(OIIO::ImageInput& file) {
    std::vector<Layer> layers;
    for (int part = 0; file.seek_subimage(part, 0); ++part) {
        const OIIO::ImageSpec& spec = file.spec();
        const std::string partName(spec.get_string_attribute("oiio:subimagename"));
        for (int i = 0; i < spec.nchannels; ++i)
            addChannel(layers, part, partName, spec.channelnames[static_cast<std::size_t>(i)], i);
    }
    (void)file.geterror();  // of the part behind the last
    return layers;
}

std::string shownList(const std::vector<Layer>& layers, const Layer* without) {
    std::string text;
    for (const Layer& layer : layers)
        if (&layer != without) text += (text.empty() ? "" : ", ") + layer.shown();
    return text;
}

const Layer& choose(const std::vector<Layer>& layers, const std::string& path,
                    const std::string& wanted) {
    const auto find = [&](auto fits) {
        const auto found = std::find_if(layers.begin(), layers.end(), fits);
        return found == layers.end() ? nullptr : &*found;
    };
    const Layer* chosen;
    if (!wanted.empty()) {
        chosen = find([&](const Layer& l) { return l.isPicture() && l.isCalled(wanted); });
        if (chosen == nullptr)
            fail(Exit::kInput,
                 "--layer: {} has no layer \"{}\" with red, green and blue; it has {}", path,
                 wanted, shownList(layers, nullptr));
        return *chosen;
    }
    chosen = find([](const Layer& l) { return l.isOwn() && l.hasColours(); });
    if (chosen == nullptr) chosen = find([](const Layer& l) { return l.isOwn() && l.isPicture(); });
    if (chosen == nullptr)
        fail(Exit::kInput,
             "cannot read {}: no red, green and blue of its own; name one of its layers with "
             "--layer: {}",
             path, shownList(layers, nullptr));
    return *chosen;
}

// Formats without names for their channels: one to four of them, the last of two or four alpha.
ChannelPlaces plainPlaces(const OIIO::ImageSpec& spec) {
    ChannelPlaces at;
    at.alpha = spec.alpha_channel;
    const int colours = spec.nchannels - (spec.alpha_channel >= 0 ? 1 : 0);
    if (colours >= 3) {
        at.red = 0, at.green = 1, at.blue = 2;
        return at;
    }
    at.red = at.green = at.blue = spec.alpha_channel == 0 && spec.nchannels > 1 ? 1 : 0;
    return at;
}

}  // namespace

int ChannelPlaces::first() const {
    const int colours = std::min({red, green, blue});
    return alpha < 0 ? colours : std::min(colours, alpha);
}

int ChannelPlaces::behindLast() const { return std::max({red, green, blue, alpha}) + 1; }

ChannelPlaces chooseChannels(OIIO::ImageInput& file, const std::string& path,
                             const std::string& layer) {
    if (std::string_view(file.format_name()) != "openexr") {
        if (!layer.empty() && lowered(layer) != "rgba")
            fail(Exit::kInput, "--layer: {} has no layers, only an EXR has", path);
        return plainPlaces(file.spec());
    }
    const std::vector<Layer> layers = layersOf(file);
    const Layer& chosen = choose(layers, path, layer);
    ChannelPlaces at;
    at.part = chosen.part;
    at.alpha = chosen.find({"a", "alpha"});
    at.red = at.green = at.blue = chosen.find({"y"});
    if (chosen.hasColours()) {
        at.red = chosen.find({"r", "red"});
        at.green = chosen.find({"g", "green"});
        at.blue = chosen.find({"b", "blue"});
    }
    at.dropped = shownList(layers, &chosen);
    if (!file.seek_subimage(at.part, 0)) fail(Exit::kInput, "cannot read {}", path);
    return at;
}

}  // namespace tool
