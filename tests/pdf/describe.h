// PDF values as text, so that a test compares a whole value in one line.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "pdf/object.h"

namespace zorvan::test {

/// The bytes of a text, as the reader takes them.
std::span<const std::uint8_t> BytesOf(std::string_view text);
/// The other way round.
std::string TextOf(std::span<const std::uint8_t> bytes);

/// "5", "0.5r" for a real, "/Name", "(literal)", "<hexadecimal>", "[1 2]", "<</A 1 ->>" with "-" for an empty
/// slot, "stream@OFFSET+LENGTH<<...>>", "12 0 R", "mark", "op:" and up to four characters. Needs a job.
std::string Describe(PdfObject object);

}  // namespace zorvan::test
