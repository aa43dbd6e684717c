// Size classes, free lists and chunks of the block store.
#include "pdf/allocation_registry.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

namespace zorvan {

std::uint32_t AllocationRegistry::SizeClass(std::size_t size) {
    const std::size_t lastGranule = (size + sizeof(Header) - 1) / kGranule;
    if (lastGranule < kSteps) {
        return static_cast<std::uint32_t>(lastGranule);
    }
    if (lastGranule >= kLargest / kGranule) {
        return kOwnChunk;
    }
    return static_cast<std::uint32_t>(kSteps + std::bit_width(lastGranule / kSteps) - 1);
}

std::size_t AllocationRegistry::ClassSize(std::uint32_t sizeClass) {
    return sizeClass < kSteps ? (sizeClass + 1) * kGranule : (kSteps * kGranule) << (sizeClass - kSteps + 1);
}

AllocationRegistry::Header* AllocationRegistry::HeaderAt(Handle handle) const noexcept {
    const std::size_t place = handle & ((1U << kPlaceBits) - 1);
    return reinterpret_cast<Header*>(chunks_[handle >> kPlaceBits].bytes.get() + place * kGranule);
}

AllocationRegistry::Header* AllocationRegistry::Find(Handle handle) const noexcept {
    const std::size_t chunk = handle >> kPlaceBits;
    const std::size_t place = (handle & ((1U << kPlaceBits) - 1)) * kGranule;
    if (handle == 0 || chunk >= chunks_.size() || place + sizeof(Header) > chunks_[chunk].size) {
        return nullptr;
    }
    Header* header = HeaderAt(handle);
    return header->state == kLive ? header : nullptr;
}

AllocationRegistry::Handle AllocationRegistry::AddChunk(std::size_t size) {
    if (size > limit_ - std::min(bytes_, limit_)) {
        throw std::bad_alloc();
    }
    std::size_t index = chunks_.size();
    if (!freeChunks_.empty()) {
        index = freeChunks_.back();
    } else if (index >> (32 - kPlaceBits) != 0) {
        throw std::bad_alloc();
    }
    Chunk chunk{std::make_unique_for_overwrite<std::byte[]>(size), static_cast<std::uint32_t>(size)};
    if (index == chunks_.size()) {
        freeChunks_.reserve(chunks_.size() + 1);  // so that releasing a large block never allocates
        chunks_.push_back(std::move(chunk));
    } else {
        freeChunks_.pop_back();
        chunks_[index] = std::move(chunk);
    }
    bytes_ += size;
    return static_cast<Handle>(index << kPlaceBits);
}

AllocationRegistry::Handle AllocationRegistry::Take(std::uint32_t sizeClass, std::size_t size) {
    if (sizeClass == kOwnChunk) {
        // The first granule stays empty so that no handle is 0.
        return AddChunk(kGranule + sizeof(Header) + size) + 1;
    }
    if (freeLists_[sizeClass] != 0) {
        const Handle handle = freeLists_[sizeClass];
        freeLists_[sizeClass] = HeaderAt(handle)->link;
        return handle;
    }
    const std::size_t wanted = ClassSize(sizeClass);
    if (openRest_ < wanted) {
        open_ = AddChunk(kChunkSize) + 1;
        openRest_ = kChunkSize - kGranule;
    }
    const Handle handle = open_;
    open_ += static_cast<Handle>(wanted / kGranule);
    openRest_ -= wanted;
    return handle;
}

AllocationRegistry::Handle AllocationRegistry::Allocate(std::size_t size) {
    if (size > UINT32_MAX / 2) {
        throw std::bad_alloc();
    }
    const std::uint32_t sizeClass = SizeClass(size);
    const Handle handle = Take(sizeClass, size);
    Header* header = HeaderAt(handle);
    *header = {kLive, static_cast<std::uint16_t>(sizeClass), 0, 0, 0};
    std::memset(header + 1, 0, size);
    ++liveBlocks_;
    return handle;
}

std::byte* AllocationRegistry::Address(Handle handle) const noexcept {
    Header* header = Find(handle);
    return header == nullptr ? nullptr : reinterpret_cast<std::byte*>(header + 1);
}

void AllocationRegistry::Release(Handle handle) noexcept {
    Header* header = Find(handle);
    if (header == nullptr) {
        return;
    }
    --liveBlocks_;
    header->state = kFree;
    if (header->sizeClass == kOwnChunk) {
        bytes_ -= chunks_[handle >> kPlaceBits].size;
        chunks_[handle >> kPlaceBits] = {};
        freeChunks_.push_back(handle >> kPlaceBits);
        return;
    }
    header->link = freeLists_[header->sizeClass];
    freeLists_[header->sizeClass] = handle;
}

void AllocationRegistry::Clear() noexcept {
    chunks_.clear();
    chunks_.shrink_to_fit();
    freeChunks_.clear();
    freeChunks_.shrink_to_fit();
    freeLists_.fill(0);
    open_ = 0;
    openRest_ = 0;
    liveBlocks_ = 0;
    bytes_ = 0;
}

}  // namespace zorvan
