// A file of any bytes that stands in no folder: what the fuzz targets open.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/require.h"

namespace zorvan::fuzz {

class MemoryFile {
public:
    MemoryFile() = default;
    explicit MemoryFile(std::span<const std::uint8_t> bytes) { Write(bytes); }
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// Makes these bytes the file's, in place of others. Nothing may have it mapped.
    void Write(std::span<const std::uint8_t> bytes) const {
        Require(ftruncate(descriptor_, static_cast<off_t>(bytes.size())) == 0);
        Require(pwrite(descriptor_, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    }
    [[nodiscard]] std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_ = memfd_create("input", MFD_CLOEXEC);
};

}  // namespace zorvan::fuzz
