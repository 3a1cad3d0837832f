// The golden frames through the loaded module: the line buffer as the host gets it, bit for bit,
// in all depths and on both roads.
#include <algorithm>
#include <cstring>
#include <sstream>

#include "PlayedEffect.h"
#include "support/SameImage.h"

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

Image imageOf(const PF_EffectWorld& world, Depth depth) {
    Image image(world.width, world.height, depth);
    for (int y = 0; y < world.height; ++y) {
        const auto* const row = reinterpret_cast<const char*>(world.data) +
                                static_cast<std::ptrdiff_t>(world.rowbytes) * y;
        std::memcpy(image.data() + image.rowBytes() * static_cast<std::size_t>(y), row,
                    image.rowBytes());
    }
    return image;
}

// Where a frame's pixels are known too, a difference can be looked at.
void expectPixels(const Image& buffer, const golden::Frame& frame) {
    Image expected(frame.info.width, frame.info.height, Depth::bits8);
    ASSERT_EQ(frame.pixels8.size(), expected.size());
    std::ranges::copy(frame.pixels8, expected.data());
    expectSameImage(buffer, expected);
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
                if (depth == Depth::bits8 && !frame.pixels8.empty()) {
                    expectPixels(imageOf(buffer, depth), frame);
                }
            };
            EXPECT_EQ(render(request).code, 0);
            EXPECT_EQ(hashes, std::vector{hex(frame.hashes[d])});
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, GoldenFramesTest,
                         ::testing::Range<std::size_t>(0, golden::frames().size()), nameOf);

}  // namespace
