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
    Bytes data;
    std::size_t consumed = 0;  // of the bytes behind "ID", up to "EI"
};

/// The search for "EI" in one stream. It remembers that there is none ahead, so that many images without an
/// end cost no more than one.
class ImageEnds {
public:
    /// The place of the next "EI" at or behind `from` that stands between white space and is followed by what
    /// can be content; the size of `rest` when there is none.
    std::size_t Find(Bytes rest, std::size_t from);

private:
    bool none_ = false;
};

/// `rest` begins right behind "ID".
/// - Unfiltered data has `expected` bytes, if "EI" follows them.
/// - Data whose first filter is an ASCII one ends with that filter's mark, if nothing else than its digits
/// stands before it.
/// - Other data, and what is none of the above, ends at the first "EI" between white space that is followed
/// by what can be
///   content, or else at the first "EI" before which the data decodes to `expected` bytes.
/// Where all of this fails the data is all there is.
InlineData FindInlineData(Bytes rest, const std::vector<InlineFilter>& filters, std::size_t expected,
                          ImageEnds& ends);

}  // namespace zorvan
