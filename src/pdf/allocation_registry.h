// The blocks of the object layer: small stable pieces of memory under 32-bit handles, dropped all at once.
//
// Blocks come out of large chunks, sorted into free lists by size, so that making, finding and releasing one
// is O(1) and dropping a file's blocks frees the chunks without looking at a single block.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace zorvan {

class AllocationRegistry {
public:
    /// 0 is no block. The upper half names the chunk, the lower half the place in it.
    using Handle = std::uint32_t;

    AllocationRegistry() = default;
    ~AllocationRegistry() { Clear(); }
    AllocationRegistry(const AllocationRegistry&) = delete;
    AllocationRegistry& operator=(const AllocationRegistry&) = delete;

    /// The most bytes that all blocks together may take up from now on.
    void SetLimit(std::size_t bytes) { limit_ = bytes; }
    /// A zeroed block of `size` bytes, aligned to 8. Throws std::bad_alloc, also beyond the limit.
    Handle Allocate(std::size_t size);
    /// The block's first byte; it stays there until it is released. Null for a handle that is not in use.
    [[nodiscard]] std::byte* Address(Handle handle) const noexcept;
    /// Leaves a handle that is not in use alone.
    void Release(Handle handle) noexcept;
    /// Drops every block.
    void Clear() noexcept;

    [[nodiscard]] std::size_t LiveBlocks() const { return liveBlocks_; }

    /// Two words beside each block in use, for whoever walks blocks without recursion: the next block of the
    /// walk, and what this one is.
    [[nodiscard]] Handle Link(Handle handle) const noexcept { return HeaderAt(handle)->link; }
    [[nodiscard]] std::uint16_t Type(Handle handle) const noexcept { return HeaderAt(handle)->type; }
    void SetLink(Handle handle, Handle next, std::uint16_t type) noexcept {
        HeaderAt(handle)->link = next;
        HeaderAt(handle)->type = type;
    }

private:
    struct Header {
        std::uint32_t state;  // kLive, or kFree
        std::uint16_t sizeClass;
        std::uint16_t type;
        std::uint32_t link;    // the next block of the free list, or of a walk
        std::uint32_t unused;  // keeps the blocks aligned to the granule
    };
    struct Chunk {
        std::unique_ptr<std::byte[]> bytes;
        std::uint32_t size = 0;
    };

    static constexpr std::uint32_t kLive = 0x5EA1B10C;
    static constexpr std::uint32_t kFree = 0xF4EEB10C;
    static constexpr std::size_t kGranule = 16;
    static constexpr unsigned kPlaceBits = 16;
    static constexpr std::size_t kChunkSize = kGranule << kPlaceBits;
    static constexpr std::size_t kLargest = kChunkSize / 8;  // larger blocks get a chunk of their own
    static constexpr std::size_t kSteps = 64;  // classes of one granule each, then doubling ones
    static constexpr std::size_t kClasses = kSteps + 16;
    static constexpr std::uint32_t kOwnChunk = kClasses;

    static std::uint32_t SizeClass(std::size_t size);
    static std::size_t ClassSize(std::uint32_t sizeClass);
    [[nodiscard]] Header* Find(Handle handle) const noexcept;
    [[nodiscard]] Header* HeaderAt(Handle handle) const noexcept;
    Handle Take(std::uint32_t sizeClass, std::size_t size);
    Handle AddChunk(std::size_t size);

    std::vector<Chunk> chunks_;
    std::vector<std::uint32_t> freeChunks_;  // indices of chunks of large blocks that were released
    std::array<Handle, kClasses> freeLists_{};
    Handle open_ = 0;           // where the chunk being filled goes on
    std::size_t openRest_ = 0;  // bytes left there
    std::size_t liveBlocks_ = 0;
    std::size_t bytes_ = 0;  // of all chunks
    std::size_t limit_ = SIZE_MAX;
};

}  // namespace zorvan
