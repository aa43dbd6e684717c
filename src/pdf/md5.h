// The MD5 message digest (RFC 1321).
#pragma once

#include <array>
#include <cstdint>

#include "pdf/byte_scan.h"

namespace zorvan {

std::array<std::uint8_t, 16> Md5(Bytes message);

}  // namespace zorvan
