// Pages of an anonymous mapping.
#include <sys/mman.h>
#include <unistd.h>

#include "support/guarded_buffer.h"

namespace zorvan::test {
namespace {

std::size_t PageSize() {
    return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace

GuardedBuffer::GuardedBuffer(std::size_t capacity)
    : size_((capacity + PageSize() - 1) / PageSize() * PageSize()) {
    void* pages =
        mmap(nullptr, size_ + PageSize(), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    start_ = pages == MAP_FAILED ? nullptr : static_cast<std::uint8_t*>(pages);
    ready_ = start_ != nullptr && mprotect(start_ + size_, PageSize(), PROT_NONE) == 0;
}

GuardedBuffer::~GuardedBuffer() {
    if (start_ != nullptr) {
        munmap(start_, size_ + PageSize());
    }
}

}  // namespace zorvan::test
