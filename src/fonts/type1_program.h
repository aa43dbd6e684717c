// Type 1 programs: a clear-text part, and a part encrypted for eexec.
#pragma once

#include <cstddef>

#include "api/status.h"
#include "pdf/byte_buffer.h"
#include "pdf/byte_scan.h"
#include "pdf/object.h"

namespace zorvan {

/// A decoded program taken apart after its declared lengths, both clamped to what is there.
///
/// What real files do wrong is put right, because it would end the job on the device:
/// - segment headers of PFB files (Adobe TN 5040) are taken out, and the segments tell the lengths;
/// - a length that is not declared is found out, and a clear-text part that ends a few bytes before or behind
/// the line
///   end after "eexec" is made to end there;
/// - an encrypted part in hexadecimal digits becomes the bytes that they stand for.
class Type1Parts {
public:
    /// The program must outlive the parts; a length of 0 counts as not declared.
    Type1Parts(Bytes program, std::size_t length1, std::size_t length2);

    /// Ends with "currentfile eexec" and its line end.
    [[nodiscard]] Bytes Clear() const { return clear_; }
    /// Binary.
    [[nodiscard]] Bytes Encrypted() const { return encrypted_; }

private:
    void JoinSegments(Bytes& program, std::size_t& length1, std::size_t& length2);
    std::size_t JoinSegmentsOfType(Bytes& rest, std::uint8_t type);

    ByteBuffer joined_;
    ByteBuffer binary_;
    Bytes clear_;
    Bytes encrypted_;
};

/// Writes the program of a font: `value` is its descriptor's `FontFile`, `font` its reference. The trailer of
/// zeros and `cleartomark` is always our own: the file's may be missing.
Status WriteType1Program(PdfObject value, PdfObject font);

}  // namespace zorvan
