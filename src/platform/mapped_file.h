// A file mapped whole and read-only into memory.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace zorvan {

class MappedFile {
public:
    MappedFile() = default;
    ~MappedFile() { Unmap(); }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    /// Maps the file and keeps no handle of it. False when it cannot be opened or mapped, is no regular file
    /// or is 4 GiB or larger (offsets in a PDF file are 32-bit here). An empty file maps to an empty view.
    [[nodiscard]] bool Map(const std::string& path);
    void Unmap();

    [[nodiscard]] std::span<const std::uint8_t> Bytes() const { return {view_, size_}; }

    /// Tells the system that a part of the view is done with: the pages need not stay in memory, and come
    /// back when they are read again.
    void LetGo(std::span<const std::uint8_t> part) const;

private:
    const std::uint8_t* view_ = nullptr;
    std::uint32_t size_ = 0;
};

}  // namespace zorvan
