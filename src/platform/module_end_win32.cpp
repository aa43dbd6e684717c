// Gives back, when its module is unloaded, what the compiler's run-time library has taken for it and keeps:
// thread slots, of which a process has 1,088, the memory for exceptions, and the thread's record with two
// handles of the system. A host that begins many jobs loads the codec library as often, and would run out.
#include <algorithm>
#include <array>

#include <windows.h>

// The run-time library's own names.
namespace __gnu_cxx {
void __freeres();
}
extern "C" const IMAGE_TLS_DIRECTORY _tls_used;

namespace {

constexpr LONG kMostSlots = 16;
std::array<DWORD, kMostSlots> slots;
LONG taken = 0;

DWORD WINAPI TakeSlot() {
    using Function = DWORD(WINAPI*)();
    const FARPROC system = GetProcAddress(GetModuleHandleA("kernel32.dll"), "TlsAlloc");
    const DWORD slot = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(system))();
    const LONG place = InterlockedIncrement(&taken) - 1;
    if (place < kMostSlots) {
        slots[static_cast<std::size_t>(place)] = slot;
    }
    return slot;
}

// What the run-time library does for a thread that ends, it does for none that goes on without the module.
void ForgetThread() {
    const auto* callback = reinterpret_cast<const PIMAGE_TLS_CALLBACK*>(_tls_used.AddressOfCallBacks);
    for (; *callback != nullptr; ++callback) {
        (*callback)(nullptr, DLL_THREAD_DETACH, nullptr);
    }
}

__attribute__((destructor(101))) void GiveBack() {
    ForgetThread();
    __gnu_cxx::__freeres();
    std::for_each_n(slots.begin(), std::min(taken, kMostSlots), TlsFree);
}

}  // namespace

// What is linked calls TlsAlloc through this pointer, which would come from the system's import library
// otherwise.
extern "C" {
extern DWORD(WINAPI* const importOfTlsAlloc)() __asm__("__imp__TlsAlloc@0");
DWORD(WINAPI* const importOfTlsAlloc)() = TakeSlot;
}
