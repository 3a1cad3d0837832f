#pragma once

#include <memory>
#include <optional>

#include "host/HostOffer.h"
#include "host/Image.h"
#include "host/Ledger.h"
#include "hostapi/hostapi.h"

namespace standin {

// Pixels with a world's record over them: padded rows, guards before and behind. Owns the memory.
// While it lives its depth can be asked by the address of its pixels (see depthOf).
class WorldBuffer {
  public:
    // Null when there is no memory. Pixels are zero when `clear`, else junk that is no picture or,
    // when the host does not watch them, whatever was there.
    static std::unique_ptr<WorldBuffer> make(A_long width, A_long height, Depth depth,
                                             const HostOffer& offer, bool clear);
    ~WorldBuffer();
    WorldBuffer(const WorldBuffer&) = delete;
    WorldBuffer& operator=(const WorldBuffer&) = delete;

    PF_EffectWorld& world() { return world_; }
    Depth depth() const { return depth_; }

    // The picture's part at x, y of this world's size.
    void load(const Image& image, A_long x, A_long y);
    Image toImage() const;
    // Likewise, for the last use of this world: its memory becomes the picture's where nothing else
    // lies in it.
    Image takeImage();
    // Whether the pixels still are that part of the picture.
    bool holds(const Image& image, A_long x, A_long y) const;

    // Pixels that still hold the junk of a world that was not cleared.
    long untouchedPixels() const;
    // Whether guards and row padding are as they were made.
    bool marginsIntact() const;

  private:
    WorldBuffer() = default;
    std::byte* row(A_long y) const;
    std::size_t pictureRowBytes() const;
    bool allocate(std::size_t guard, bool clear);
    void writeJunk();

    std::byte* memory_ = nullptr;
    std::size_t memorySize_ = 0;
    std::size_t pixelStart_ = 0;  // offset of the pixels in the memory
    Depth depth_ = Depth::bits8;
    PF_EffectWorld world_{};
};

// Depth of a living world of any host in the process, by its pixels' address; copies of a world's
// record count as that world.
std::optional<Depth> depthOf(const PF_EffectWorld& world);

// The worlds that effects made, of all hosts in the process. Safe from any thread.
namespace effectWorlds {

PF_Err create(const std::shared_ptr<Ledger>& owner, const HostOffer& offer, A_long width,
              A_long height, Depth depth, bool clear, PF_EffectWorld& world);
PF_Err dispose(PF_EffectWorld& world, Ledger& caller);

}  // namespace effectWorlds

}  // namespace standin
