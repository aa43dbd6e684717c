// Puts a page that may not be touched behind every mapped file. The linker sends the program's calls of mmap
// and munmap here (--wrap); the former is mmap64 where file sizes have 64 bits.
#include <set>

#include <sys/mman.h>
#include <unistd.h>

#include "bounds/guarded_mapping.h"

namespace {

std::size_t mappings = 0;
std::set<void*> guarded;

std::size_t PageSize() {
    return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// The whole pages of a mapping, and one more.
std::size_t WithGuard(std::size_t length) {
    return (length + PageSize() - 1) / PageSize() * PageSize() + PageSize();
}

}  // namespace

namespace zorvan::test {

std::size_t GuardedMappings() {
    return mappings;
}

}  // namespace zorvan::test

extern "C" {

void* __real_mmap64(void* address, std::size_t length, int protection, int flags, int file, off_t offset);
int __real_munmap(void* address, std::size_t length);
void* __wrap_mmap64(void* address, std::size_t length, int protection, int flags, int file, off_t offset);
int __wrap_munmap(void* address, std::size_t length);

void* __wrap_mmap64(void* address, std::size_t length, int protection, int flags, int file, off_t offset) {
    if (file < 0) {
        return __real_mmap64(address, length, protection, flags, file, offset);
    }
    void* reserved = __real_mmap64(nullptr, WithGuard(length), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (reserved == MAP_FAILED) {
        return reserved;
    }
    guarded.insert(reserved);
    ++mappings;
    return __real_mmap64(reserved, length, protection, flags | MAP_FIXED, file, offset);
}

int __wrap_munmap(void* address, std::size_t length) {
    return __real_munmap(address, guarded.erase(address) == 0 ? length : WithGuard(length));
}

}  // extern "C"
