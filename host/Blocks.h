#pragma once

#include <cstddef>

namespace standin {

// Memory of worlds and pictures. Fresh memory costs a page fault every 4 KiB when it is first
// touched, several times the drawing of a usual frame; a program that renders many frames of one
// size has blocks kept here and used again. Safe from any thread.
namespace blocks {

// From now on keeps free blocks up to so many bytes; 0, as at the start, keeps none, so that an
// address sanitiser sees each use of memory that was given back.
void keep(std::size_t bytes);

// Null when there is no memory. Zero when `clear`, else whatever was there.
void* take(std::size_t size, bool clear);
// `size` as it was taken. A null block is left alone.
void giveBack(void* block, std::size_t size);

}  // namespace blocks

// Bytes in such a block. A value.
class BlockBytes {
  public:
    BlockBytes() = default;
    // Zero. Throws std::bad_alloc.
    explicit BlockBytes(std::size_t size);
    // Whatever was in the memory. Throws std::bad_alloc.
    static BlockBytes unwritten(std::size_t size) { return {size, false}; }
    // Owns what blocks::take gave.
    static BlockBytes adopt(std::byte* data, std::size_t size);
    BlockBytes(const BlockBytes& other);
    BlockBytes(BlockBytes&& other) noexcept { swap(other); }
    BlockBytes& operator=(BlockBytes other) noexcept {
        swap(other);
        return *this;
    }
    ~BlockBytes() { blocks::giveBack(data_, size_); }

    std::byte* data() { return data_; }
    const std::byte* data() const { return data_; }
    std::size_t size() const { return size_; }
    bool operator==(const BlockBytes& other) const;

  private:
    BlockBytes(std::size_t size, bool clear);
    void swap(BlockBytes& other) noexcept;

    std::byte* data_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace standin
