// Reads one object out of the mapped file: the tokens from an offset on become one value.
#pragma once

#include <cstdint>

#include "pdf/object.h"

namespace zorvan {

class PdfFile;

/// Parses the object at a file offset, up to "endobj" or "startxref" (the end of a trailer), "stream" or the
/// end of the file. The caller owns the result; see OwnedObject. Text that is no token, and nesting beyond
/// the limit, are recorded as kScanTokenError and end the object with what was built last.
PdfObject ParseObjectAt(const PdfFile& file, std::uint32_t offset);

/// Follows a reference to its object, and on while that is a reference again. The caller owns the result.
/// Null for an object that is free, absent or beyond the file, and for references that only lead to
/// references.
PdfObject ResolveReference(const PdfFile& file, PdfObject reference);

/// A value as it stands, or, when it is a reference, the object that it leads to in the current file, owned.
/// The one way to read a key: `const Resolved kids(DictGet(node, names::kKids));`
class Resolved {
public:
    explicit Resolved(PdfObject value);

    [[nodiscard]] PdfObject Get() const { return value_; }

private:
    OwnedObject owned_;
    PdfObject value_;
};

}  // namespace zorvan
