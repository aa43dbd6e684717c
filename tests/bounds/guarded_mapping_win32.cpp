// The system itself leaves the addresses behind a view alone up to the next multiple of 64 KiB: this counts
// the views behind which there is nothing indeed.
#include <cstdint>

#include <windows.h>

#include "bounds/guarded_mapping.h"

namespace {

std::size_t mappings = 0;

bool IsGuarded(const std::uint8_t* view) {
    MEMORY_BASIC_INFORMATION pages{};
    return VirtualQuery(view, &pages, sizeof pages) != 0 &&
           VirtualQuery(view + pages.RegionSize, &pages, sizeof pages) != 0 && pages.State != MEM_COMMIT;
}

LPVOID WINAPI MapCounting(HANDLE section, DWORD access, DWORD offsetAbove, DWORD offset, SIZE_T count) {
    void* const view = MapViewOfFileEx(section, access, offsetAbove, offset, count, nullptr);
    if (view != nullptr && IsGuarded(static_cast<const std::uint8_t*>(view))) {
        ++mappings;
    }
    return view;
}

}  // namespace

// What is linked calls MapViewOfFile through this pointer, which would come from the system's import library
// otherwise.
extern "C" {
extern decltype(&MapViewOfFile) const importOfMapViewOfFile __asm__("__imp__MapViewOfFile@20");
decltype(&MapViewOfFile) const importOfMapViewOfFile = MapCounting;
}

namespace zorvan::test {

std::size_t GuardedMappings() {
    return mappings;
}

}  // namespace zorvan::test
