// Finds the end of an inline image's data.
#pragma once

#include <cstdint>

#include "pdf/byte_scan.h"

namespace zorvan {

/// `rest` begins right behind the "ID" keyword. Result: the number of bytes up to the "EI" that ends the
/// data, which stands between white space and is followed by what can be content; all of `rest` when there is
/// none.
std::size_t FindInlineImageEnd(Bytes rest);

}  // namespace zorvan
