// Cuts bytes into PDF tokens, one token a call, for the object parser and the content interpreter alike.
//
// The lexer is shallow on purpose: strings keep their source text, "<<" and "[" are the same mark, operators
// are known by their packed first four bytes. Where its rules differ from the PDF Reference they are
// required.
#pragma once

#include <cstdint>
#include <span>

#include "pdf/object.h"

namespace zorvan {

class NameTable;

/// The status word of a call: bits and one code.
namespace lex {
constexpr std::uint32_t kNothing = 0x00;  // a comment was skipped: call again
constexpr std::uint32_t kEnd = 0x01;      // the input is exhausted: do not call again
constexpr std::uint32_t kToken = 0x10;    // a token was stored
constexpr std::uint32_t kError = 0xFF00;  // no token: the bytes are none
constexpr bool IsError(std::uint32_t status) {
    return (status & 0xFF00U) != 0;
}
}  // namespace lex

/// Scans the first token of `bytes`. `consumed` is always set; `token` only when kToken is returned, and a
/// string token is then the caller's to free. Names enter `names`. No byte outside `bytes` is read: where a
/// rule takes bytes always, those past the end count as zero.
std::uint32_t ScanToken(std::span<const std::uint8_t> bytes, NameTable& names, PdfObject& token,
                        std::uint32_t& consumed);

/// Whitespace of PDF text, with backspace, which counts as a blank on purpose.
bool IsPdfWhitespace(std::uint8_t byte);
/// What names and operators are made of: neither whitespace nor a delimiter.
bool IsPdfRegular(std::uint8_t byte);

}  // namespace zorvan
