// A byte buffer that grows in place where the system can, so that a large stream is held once and not twice.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>

namespace zorvan {

class ByteBuffer {
public:
    [[nodiscard]] std::span<const std::uint8_t> Bytes() const { return {bytes_.get(), size_}; }
    [[nodiscard]] std::size_t Size() const { return size_; }

    /// At least `count` writable bytes behind the data. Throws std::bad_alloc.
    std::span<std::uint8_t> Room(std::size_t count) {
        if (capacity_ - size_ < count) {
            Grow(count);
        }
        return {bytes_.get() + size_, capacity_ - size_};
    }
    /// Counts bytes that were written into the room to the data.
    void Commit(std::size_t count) { size_ += count; }

private:
    struct Free {
        void operator()(std::uint8_t* bytes) const { std::free(bytes); }  // NOLINT: pairs with realloc
    };

    void Grow(std::size_t count) {
        // realloc moves large blocks by their page tables, and pages not yet written cost nothing.
        const std::size_t wanted = size_ + count + size_ / 2;
        void* grown = std::realloc(bytes_.get(), wanted);  // NOLINT: no container grows in place
        if (grown == nullptr) {
            throw std::bad_alloc();
        }
        static_cast<void>(bytes_.release());
        bytes_.reset(static_cast<std::uint8_t*>(grown));
        capacity_ = wanted;
    }

    std::unique_ptr<std::uint8_t, Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace zorvan
