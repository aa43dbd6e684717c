/* Gives back the system's thread slots that the compiler's run-time library has taken for this module, when
   the module is unloaded. That library never does, and a process has 1,088 of them: a host could begin no
   more jobs than that. */
#include <windows.h>

enum { kMostSlots = 16 };

static DWORD slots[kMostSlots];
static LONG taken;

static DWORD WINAPI TakeSlot(void) {
    typedef DWORD(WINAPI * Function)(void);
    const FARPROC system = GetProcAddress(GetModuleHandleA("kernel32.dll"), "TlsAlloc");
    const DWORD slot = ((Function)(void (*)(void))system)();
    const LONG place = InterlockedIncrement(&taken) - 1;
    if (place < kMostSlots) {
        slots[place] = slot;
    }
    return slot;
}

/* What is linked calls TlsAlloc through this pointer, which would come from the system's import library
 * otherwise. */
extern DWORD(WINAPI* const importOfTlsAlloc)(void) __asm__("__imp__TlsAlloc@0");
DWORD(WINAPI* const importOfTlsAlloc)(void) = TakeSlot;

/* The last of the module's destructors: the ones before may still look into their slots. */
__attribute__((destructor(101))) static void GiveSlotsBack(void) {
    LONG place;
    for (place = 0; place < taken && place < kMostSlots; ++place) {
        TlsFree(slots[place]);
    }
}
