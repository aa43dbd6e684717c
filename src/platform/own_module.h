// The module that holds this code, and the resources linked into it. On Windows alone.
#pragma once

#include <cstdint>
#include <span>

#include <windows.h>

namespace zorvan {

/// The library's module, whatever program loaded it; null when the system cannot tell.
HMODULE OwnModule();

/// The bytes of a resource, which stay as long as the module; empty when there is none.
std::span<const std::uint8_t> OwnResource(unsigned identifier, const char* type);

}  // namespace zorvan
