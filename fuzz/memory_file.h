// A file of any bytes that nobody else sees: what the fuzz targets open.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace zorvan::fuzz {

class MemoryFile {
public:
    MemoryFile();
    explicit MemoryFile(std::span<const std::uint8_t> bytes) : MemoryFile() { Write(bytes); }
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// Makes these bytes the file's, in place of others. Nothing may have it mapped.
    void Write(std::span<const std::uint8_t> bytes) const;
    [[nodiscard]] const std::string& Path() const { return path_; }

private:
    int descriptor_;
    std::string path_;
};

}  // namespace zorvan::fuzz
