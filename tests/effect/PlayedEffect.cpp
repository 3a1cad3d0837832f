#include "PlayedEffect.h"

#include <algorithm>

#include "params/ParamRows.h"

namespace played {

using namespace standin;

namespace {

// A golden file's raw numbers as the value that a host hands out so.
Value valueFrom(const streakfall::ParamRow& row, const std::vector<double>& raw,
                const streakfall::FrameInfo& info) {
    constexpr double kFixedOne = 65536.0;
    switch (row.type) {
        case PF_Param_POINT:
            return Value::point(
                raw.at(0) / kFixedOne * info.downsampleX.den / info.downsampleX.num,
                raw.at(1) / kFixedOne * info.downsampleY.den / info.downsampleY.num);
        case PF_Param_COLOR:
            return Value::color(raw.at(1), raw.at(2), raw.at(3), raw.at(0));
        case PF_Param_ANGLE:
            return Value::number(raw.at(0) / kFixedOne);
        default:
            return Value::number(raw.at(0));
    }
}

}  // namespace

std::string& modulePath() {
    static std::string path = STREAKFALL_MODULE;
    return path;
}

Module& module() {
    static Module one(modulePath());
    return one;
}

Host& EffectTest::play(const HostOffer& offer, const LayerSize& layer) {
    endPlay();
    host_ = std::make_unique<Host>(module(), offer);
    EXPECT_EQ(host_->start(), 0);
    instance_.emplace(*host_, layer);
    return *host_;
}

void EffectTest::endPlay() {
    if (instance_) {
        EXPECT_EQ(instance_->setDown(), 0);
        instance_.reset();
    }
    if (!host_) return;
    if (host_->started()) {
        EXPECT_EQ(host_->stop(), 0);
    }
    EXPECT_EQ(host_->ledger().unbalanced(), "");
    EXPECT_EQ(host_->ledger().violationText(), "");
    host_.reset();
}

void EffectTest::set(const char* name, double value) { set(name, Value::number(value)); }

void EffectTest::set(const char* name, const Value& value) {
    const ParamInfo* const param = host().param(std::string(name));
    ASSERT_NE(param, nullptr) << name;
    instance().storeValue(param->id, value);
}

void EffectTest::setAll(const golden::Frame& frame) {
    instance().storeDefaults();
    for (const auto& named : frame.named) {
        instance().storeValue(named.first, valueOf(frame, named.first));
    }
}

FrameResult EffectTest::render(const FrameRequest& request) {
    return renderFrame(instance(), request);
}

Value valueOf(const golden::Frame& frame, std::int32_t paramId) {
    const auto row = std::ranges::find(streakfall::kParamRows, paramId, &streakfall::ParamRow::id);
    return valueFrom(*row, frame.named.at(paramId), frame.info);
}

FrameRequest requestFor(const golden::Frame& frame, Depth depth, Road road) {
    FrameRequest request;
    request.road = road;
    request.input = Image::opaqueBlack(frame.info.width, frame.info.height, depth);
    request.currentTime = frame.info.currentTime;
    request.timeStep = frame.info.timeStep;
    request.downsampleX = frame.info.downsampleX;
    request.downsampleY = frame.info.downsampleY;
    request.originX = frame.info.originX;
    request.originY = frame.info.originY;
    return request;
}

FrameRequest halfMatted(int width, int height, Depth depth, Road road) {
    FrameRequest request;
    request.road = road;
    request.input = Image::filled(width, height, depth, 1.0, 0.5, 0.5, 0.5);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width / 2; ++x) request.input.set(x, y, {0.0, 0.5, 0.5, 0.5});
    }
    return request;
}

}  // namespace played
