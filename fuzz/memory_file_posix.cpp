// A file that stands in no folder.
#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/memory_file.h"
#include "fuzz/require.h"

namespace zorvan::fuzz {

MemoryFile::MemoryFile()
    : descriptor_(memfd_create("input", MFD_CLOEXEC)),
      path_("/proc/self/fd/" + std::to_string(descriptor_)) {}

MemoryFile::~MemoryFile() {
    close(descriptor_);
}

void MemoryFile::Write(std::span<const std::uint8_t> bytes) const {
    Require(ftruncate(descriptor_, static_cast<off_t>(bytes.size())) == 0);
    Require(pwrite(descriptor_, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
}

}  // namespace zorvan::fuzz
