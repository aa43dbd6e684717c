// Finds the data of an inline image: which bytes behind the "ID" keyword are its own.
#pragma once

#include <cstdint>
#include <vector>

#include "pdf/byte_scan.h"
#include "pdf/codec.h"
#include "pdf/object.h"

namespace zorvan {

/// A filter of an inline image under its full name, and its parameters as a value lent by the image's
/// dictionary.
struct InlineFilter {
    CodecKind kind = CodecKind::kNone;
    PdfObject parameters;
};

struct InlineData {
    Bytes data;                // without the white space around it
    std::size_t consumed = 0;  // of the bytes behind "ID", up to "EI"
};

/// `rest` begins right behind "ID". Unfiltered data has `expected` bytes. Data whose first filter is an ASCII
/// one ends with that filter's mark; other data at the first "EI" that stands between white space, is
/// followed by what can be content, and before which the data decodes to `expected` bytes; at the first such
/// "EI" when none does.
InlineData FindInlineData(Bytes rest, const std::vector<InlineFilter>& filters, std::size_t expected);

/// The place of the next "EI" at or behind `from` that stands between white space and is followed by what can
/// be content; the size of `rest` when there is none.
std::size_t FindInlineImageEnd(Bytes rest, std::size_t from = 1);

}  // namespace zorvan
