// A file in the folder for temporary ones, of which the system keeps in memory what it can. It is open only
// while it is written: who reads a file lets nobody write it.
#include <array>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "fuzz/memory_file.h"
#include "fuzz/require.h"

namespace zorvan::fuzz {

MemoryFile::MemoryFile() : descriptor_(-1) {
    std::array<char, MAX_PATH + 1> folder{};
    std::array<char, MAX_PATH + 1> path{};
    Require(GetTempPathA(MAX_PATH, folder.data()) != 0);
    Require(GetTempFileNameA(folder.data(), "zrv", 0, path.data()) != 0);
    path_ = path.data();
}

MemoryFile::~MemoryFile() {
    DeleteFileA(path_.c_str());
}

void MemoryFile::Write(std::span<const std::uint8_t> bytes) const {
    const int descriptor = _open(path_.c_str(), _O_WRONLY | _O_TRUNC | _O_BINARY | _O_SHORT_LIVED);
    Require(descriptor >= 0);
    Require(_write(descriptor, bytes.data(), static_cast<unsigned>(bytes.size())) ==
            static_cast<int>(bytes.size()));
    _close(descriptor);
}

}  // namespace zorvan::fuzz
