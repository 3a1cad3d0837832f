#include "Fingerprint.h"

#include <fstream>
#include <vector>

#include "Digest.h"
#include "Failure.h"

namespace tool {

namespace {

using standin::ParamInfo;

standin::Time timeAt(int frame, const FrameRate& rate) {
    return {timeOf(frame, rate, "--frames"), rate.timeScale};
}

// Points open in percent of the layer.
standin::Value openingValue(const ParamInfo& param, standin::LayerSize layer) {
    if (param.type != PF_Param_POINT) return param.defaultValue;
    const auto& part = param.defaultValue.part;
    return standin::Value::point(part[0] * layer.width / 100, part[1] * layer.height / 100);
}

bool isSeed(const ParamInfo& param) { return param.name.find("Seed") != std::string::npos; }

}  // namespace

std::string fingerprintOf(const FrameJob& job, const std::string& inputDigest,
                          const RenderOptions& options, const RunForm& form,
                          const std::string& effectVersion, const standin::Instance& instance) {
    Digest digest;
    const standin::Time time = timeAt(job.frame, form.rate);
    const standin::LayerSize layer = instance.layer();
    digest.add(fmt::format("effect {}\ntime {} {} {}\nlayer {} {} {}\ninput {} {}\n", effectVersion,
                           time.value, form.rate.timeStep, form.rate.timeScale, layer.width,
                           layer.height, options.divisor, inputDigest, options.reading.layer));
    if (options.reading.alpha)
        digest.add(fmt::format("read as {}\n", static_cast<int>(*options.reading.alpha)));
    digest.add(fmt::format("form {} {} {} {} {} {}\n", standin::bitDepth(form.depth),
                           form.output.label, static_cast<int>(form.output.alpha),
                           form.output.compression, form.output.level,
                           static_cast<int>(options.road)));
    for (const ParamInfo& param : instance.host().params()) {
        if (!param.hasValue()) continue;
        digest.add(fmt::format("{}", param.id));
        for (const double part : instance.value(param.id, time).part)
            digest.add(fmt::format(" {}", part));
    }
    return digest.hex();
}

std::string lookInWords(int frame, const FrameRate& rate, const standin::Instance& instance) {
    const standin::Time time = timeAt(frame, rate);
    std::string words;
    for (const ParamInfo& param : instance.host().params()) {
        if (!param.hasValue()) continue;
        const standin::Value value = instance.value(param.id, time);
        if (value == openingValue(param, instance.layer()) && !isSeed(param)) continue;
        words +=
            fmt::format("{}{}={}", words.empty() ? "" : "; ", param.name, valueText(param, value));
    }
    return words;
}

std::string digestOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<char> block(1u << 20);
    Digest digest;
    while (file) {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        digest.add(std::string_view(block.data(), static_cast<std::size_t>(file.gcount())));
    }
    if (!file.eof()) fail(Exit::kInput, "cannot read {}", path);
    return digest.hex();
}

}  // namespace tool
