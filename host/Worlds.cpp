#include "host/Worlds.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>

namespace standin {
namespace {

constexpr std::byte kMargin{0xD7};
// Repeats every 4 bytes; as a float it is a NaN, so that no computed picture holds it.
constexpr std::uint8_t kJunk[4] = {0x5B, 0xA7, 0xC3, 0xFF};

struct Registry {
    std::mutex mutex;
    std::unordered_map<const void*, Depth> depths;
};

// Never destroyed, as modules may give worlds back while the process ends.
Registry& registry() {
    static Registry& only = *new Registry;
    return only;
}

bool isMargin(const std::byte* first, const std::byte* last) {
    return std::all_of(first, last, [](std::byte byte) { return byte == kMargin; });
}

bool isJunk(const std::byte* first, std::size_t size) {
    for (std::size_t i = 0; i < size; i += sizeof kJunk) {
        if (std::memcmp(first + i, kJunk, sizeof kJunk) != 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::unique_ptr<WorldBuffer> WorldBuffer::make(A_long width, A_long height, Depth depth,
                                               const HostOffer& offer, bool clear) {
    std::unique_ptr<WorldBuffer> buffer(new WorldBuffer);
    const A_long padding = (offer.rowPadding + 3) / 4 * 4;
    PF_EffectWorld& world = buffer->world_;
    buffer->depth_ = depth;
    buffer->pixelStart_ = static_cast<std::size_t>(offer.guardBytes + (offer.shiftPixels ? 4 : 0));
    world.world_flags = PF_WorldFlag_WRITEABLE | (depth == Depth::bits16 ? PF_WorldFlag_DEEP : 0);
    world.width = width;
    world.height = height;
    world.rowbytes = width * bytesPerPixel(depth) + padding;
    world.extent_hint = {0, 0, width, height};
    world.pix_aspect_ratio = {1, 1};
    if (!buffer->allocate(static_cast<std::size_t>(offer.guardBytes), clear)) {
        return nullptr;
    }
    world.data = reinterpret_cast<PF_Pixel*>(buffer->memory_ + buffer->pixelStart_);
    if (!clear && offer.watchPixels) {
        buffer->writeJunk();
    }
    const std::lock_guard lock(registry().mutex);
    registry().depths[world.data] = depth;
    return buffer;
}

// Large cleared worlds come zeroed from the system, so only the margins are written here.
bool WorldBuffer::allocate(std::size_t guard, bool clear) {
    const std::size_t pixels =
        static_cast<std::size_t>(world_.rowbytes) * static_cast<std::size_t>(world_.height);
    memorySize_ = pixelStart_ + pixels + guard;
    memory_ = static_cast<std::byte*>(blocks::take(memorySize_, clear));
    if (!memory_) {
        return false;
    }
    std::memset(memory_, static_cast<int>(kMargin), pixelStart_);
    std::memset(memory_ + pixelStart_ + pixels, static_cast<int>(kMargin), guard);
    const std::size_t picture = pictureRowBytes();
    for (A_long y = 0; y < world_.height; ++y) {
        std::memset(memory_ + pixelStart_ + static_cast<std::size_t>(y) * world_.rowbytes + picture,
                    static_cast<int>(kMargin), static_cast<std::size_t>(world_.rowbytes) - picture);
    }
    return true;
}

WorldBuffer::~WorldBuffer() {
    if (world_.data) {
        const std::lock_guard lock(registry().mutex);
        registry().depths.erase(world_.data);
    }
    blocks::giveBack(memory_, memorySize_);
}

std::byte* WorldBuffer::row(A_long y) const {
    return memory_ + pixelStart_ + static_cast<std::ptrdiff_t>(y) * world_.rowbytes;
}

std::size_t WorldBuffer::pictureRowBytes() const {
    return static_cast<std::size_t>(world_.width) * static_cast<std::size_t>(bytesPerPixel(depth_));
}

void WorldBuffer::writeJunk() {
    for (A_long y = 0; y < world_.height; ++y) {
        std::byte* bytes = row(y);
        for (std::size_t i = 0; i < pictureRowBytes(); i += sizeof kJunk) {
            std::memcpy(bytes + i, kJunk, sizeof kJunk);
        }
    }
}

void WorldBuffer::load(const Image& image, A_long x, A_long y) {
    for (A_long line = 0; line < world_.height; ++line) {
        std::memcpy(row(line), image.row<std::byte>(y + line) + x * bytesPerPixel(depth_),
                    pictureRowBytes());
    }
}

Image WorldBuffer::toImage() const {
    Image image = Image::unwritten(world_.width, world_.height, depth_);
    for (A_long y = 0; y < world_.height; ++y) {
        std::memcpy(image.row<std::byte>(y), row(y), pictureRowBytes());
    }
    return image;
}

Image WorldBuffer::takeImage() {
    if (memorySize_ != pictureRowBytes() * static_cast<std::size_t>(world_.height)) {
        return toImage();
    }
    return Image::ofBlock(world_.width, world_.height, depth_,
                          BlockBytes::adopt(std::exchange(memory_, nullptr), memorySize_));
}

bool WorldBuffer::holds(const Image& image, A_long x, A_long y) const {
    for (A_long line = 0; line < world_.height; ++line) {
        if (std::memcmp(row(line), image.row<std::byte>(y + line) + x * bytesPerPixel(depth_),
                        pictureRowBytes()) != 0) {
            return false;
        }
    }
    return true;
}

long WorldBuffer::untouchedPixels() const {
    const auto step = static_cast<std::size_t>(bytesPerPixel(depth_));
    long count = 0;
    for (A_long y = 0; y < world_.height; ++y) {
        for (std::size_t i = 0; i < pictureRowBytes(); i += step) {
            count += isJunk(row(y) + i, step);
        }
    }
    return count;
}

bool WorldBuffer::marginsIntact() const {
    const std::byte* pixelsEnd = row(world_.height);
    if (!isMargin(memory_, memory_ + pixelStart_) || !isMargin(pixelsEnd, memory_ + memorySize_)) {
        return false;
    }
    for (A_long y = 0; y < world_.height; ++y) {
        if (!isMargin(row(y) + pictureRowBytes(), row(y + 1))) {
            return false;
        }
    }
    return true;
}

std::optional<Depth> depthOf(const PF_EffectWorld& world) {
    const std::lock_guard lock(registry().mutex);
    const auto found = registry().depths.find(world.data);
    return found == registry().depths.end() ? std::nullopt : std::optional(found->second);
}

namespace effectWorlds {
namespace {

struct Made {
    std::unique_ptr<WorldBuffer> buffer;
    std::shared_ptr<Ledger> owner;
};

struct Store {
    std::mutex mutex;
    std::unordered_map<const void*, Made> worlds;
};

Store& store() {
    static Store& only = *new Store;
    return only;
}

bool isSide(A_long side) { return side >= 1 && side <= kPFMaxWorldSide; }

}  // namespace

PF_Err create(const std::shared_ptr<Ledger>& owner, const HostOffer& offer, A_long width,
              A_long height, Depth depth, bool clear, PF_EffectWorld& world) {
    if (!isSide(width) || !isSide(height)) {
        owner->violation("new world of " + std::to_string(width) + " x " + std::to_string(height));
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    auto buffer = WorldBuffer::make(width, height, depth, offer, clear);
    if (!buffer) {
        return PF_Err_OUT_OF_MEMORY;
    }
    world = buffer->world();
    owner->lend(Loan::world);
    const std::lock_guard lock(store().mutex);
    store().worlds[world.data] = {std::move(buffer), owner};
    return PF_Err_NONE;
}

PF_Err dispose(PF_EffectWorld& world, Ledger& caller) {
    Made made;
    {
        const std::lock_guard lock(store().mutex);
        auto node = store().worlds.extract(world.data);
        if (node.empty()) {
            caller.violation("disposal of a world that the effect does not have");
            return PF_Err_BAD_CALLBACK_PARAM;
        }
        made = std::move(node.mapped());
    }
    if (!made.buffer->marginsIntact()) {
        made.owner->violation("the effect wrote outside the pixels of a world of its own");
    }
    made.owner->giveBack(Loan::world);
    world = {};
    return PF_Err_NONE;
}

}  // namespace effectWorlds

}  // namespace standin
