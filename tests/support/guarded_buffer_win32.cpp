// Pages of a reservation of which the last is never made usable.
#include <windows.h>

#include "support/guarded_buffer.h"

namespace zorvan::test {
namespace {

std::size_t PageSize() {
    SYSTEM_INFO system{};
    GetSystemInfo(&system);
    return system.dwPageSize;
}

}  // namespace

GuardedBuffer::GuardedBuffer(std::size_t capacity)
    : size_((capacity + PageSize() - 1) / PageSize() * PageSize()),
      start_(
          static_cast<std::uint8_t*>(VirtualAlloc(nullptr, size_ + PageSize(), MEM_RESERVE, PAGE_NOACCESS))),
      ready_(start_ != nullptr && VirtualAlloc(start_, size_, MEM_COMMIT, PAGE_READWRITE) != nullptr) {}

GuardedBuffer::~GuardedBuffer() {
    if (start_ != nullptr) {
        VirtualFree(start_, 0, MEM_RELEASE);
    }
}

}  // namespace zorvan::test
