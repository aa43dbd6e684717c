// Finding the module by an address inside it, and its resources by type and number.
#include "platform/own_module.h"

namespace zorvan {

HMODULE OwnModule() {
    HMODULE module = nullptr;
    const bool found = GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                              GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                                          reinterpret_cast<const char*>(&OwnModule), &module) != FALSE;
    return found ? module : nullptr;
}

std::span<const std::uint8_t> OwnResource(unsigned identifier, const char* type) {
    const HRSRC found = FindResourceA(OwnModule(), MAKEINTRESOURCEA(identifier), type);
    const HGLOBAL loaded = found == nullptr ? nullptr : LoadResource(OwnModule(), found);
    if (loaded == nullptr) {
        return {};
    }
    return {static_cast<const std::uint8_t*>(LockResource(loaded)), SizeofResource(OwnModule(), found)};
}

}  // namespace zorvan
