// The golden frames through the loaded module: the line buffer as the host gets it, bit for bit,
// in all depths and on both roads.
#include <algorithm>
#include <sstream>

#include "PlayedEffect.h"

namespace {

using namespace played;
using namespace standin;

class GoldenFramesTest : public EffectTest, public ::testing::WithParamInterface<std::size_t> {};

std::string nameOf(const ::testing::TestParamInfo<std::size_t>& info) {
    std::string name = golden::frames()[info.param].name;
    std::ranges::transform(name, name.begin(), [](char c) { return c == '-' ? '_' : c; });
    return name;
}

std::string hex(std::uint64_t value) {
    std::ostringstream text;
    text << std::hex << value;
    return text.str();
}

TEST_P(GoldenFramesTest, LineBufferIsExact) {
    const golden::Frame& frame = golden::frames()[GetParam()];
    HostOffer offer;
    offer.rowPadding = 24;
    play(offer, {frame.info.width * static_cast<A_long>(frame.info.downsampleX.den),
                 frame.info.height * static_cast<A_long>(frame.info.downsampleY.den)});
    setAll(frame);
    for (std::size_t d = 0; d < std::size(kDepths); ++d) {
        for (const Road road : {Road::smart, Road::legacy}) {
            // Float frames come on the smart road only.
            if (road == Road::legacy && kDepths[d] == Depth::float32) continue;
            SCOPED_TRACE(std::to_string(bitDepth(kDepths[d])) +
                         (road == Road::smart ? " bits, smart" : " bits, legacy"));
            FrameRequest request = requestFor(frame, kDepths[d], road);
            std::vector<std::string> hashes;
            request.onTransfer = [&](const PF_EffectWorld& buffer, Depth depth) {
                hashes.push_back(hex(hashPixels(buffer, depth)));
            };
            EXPECT_EQ(render(request).code, 0);
            EXPECT_EQ(hashes, std::vector{hex(frame.hashes[d])});
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, GoldenFramesTest,
                         ::testing::Range<std::size_t>(0, golden::frames().size()), nameOf);

}  // namespace
