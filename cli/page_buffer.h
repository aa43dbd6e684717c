// Holds a page's bytes: in memory, and beyond a limit in an unlinked temporary file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace zorvan::cli {

class PageBuffer {
public:
    static constexpr std::size_t kMemoryLimit = std::size_t{8} << 20U;

    explicit PageBuffer(std::size_t memoryLimit = kMemoryLimit) : memoryLimit_(memoryLimit) {}
    PageBuffer(const PageBuffer&) = delete;
    PageBuffer& operator=(const PageBuffer&) = delete;
    ~PageBuffer();

    // False when the temporary file cannot be made or written; Error() is then the errno.
    bool Append(const char* bytes, std::size_t count);
    std::uint64_t Size() const { return spilled_ + memory_.size(); }
    // Hands the bytes from `begin` to `end` to `take`, in chunks, as long as it answers true. False when it
    // did not or when the temporary file cannot be read.
    using Taker = std::function<bool(std::string_view)>;
    bool Copy(std::uint64_t begin, std::uint64_t end, const Taker& take);
    void Clear();
    int Error() const { return error_; }

private:
    bool Spill();
    bool OpenTemporaryFile();
    bool CopySpilled(std::uint64_t begin, std::uint64_t end, const Taker& take);

    std::size_t memoryLimit_;
    std::vector<char> memory_;
    std::uint64_t spilled_ = 0;
    int file_ = -1;
    int error_ = 0;
};

}  // namespace zorvan::cli
