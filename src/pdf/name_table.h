// The job's names: every PDF name is an integer, so that dictionary keys are compared as integers.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/seeded_hash.h"

namespace zorvan {

/// Identifiers 1 to 350 of the names that the reader knows.
namespace names {
enum PredefinedName : std::uint32_t {
    kNone = 0,
#define ZORVAN_NAME(constant, text) constant,
#include "pdf/predefined_names.inc"
#undef ZORVAN_NAME
    kAfterPredefined,
};
static_assert(kAfterPredefined == 351);
}  // namespace names

/// A text for the inside of a PostScript string: with a backslash before every backslash and parenthesis.
std::string EscapedText(std::string_view text);

/// How a name goes into the output.
enum class NameTextMode {
    kString,  // inside a PostScript string: escaped
    kToken,   // behind a "/": what would end the name on the device becomes `$`, so that it reads one token
              // and no program
};

/// The longest text that the emitters write for a name.
constexpr std::size_t kNameTextLimit = 127;

class NameTable {
public:
    /// Enters the predefined names. Throws std::bad_alloc.
    void Fill();

    /// The identifier of a text: a predefined one, or one from 351 upward in order of first appearance.
    std::uint32_t InternName(std::string_view text);

    /// The plain text; empty for an identifier that was never handed out. Valid as long as the table.
    [[nodiscard]] std::string_view PlainText(std::uint32_t identifier) const;

    /// The text for the output, cut to `limit` bytes before it is escaped.
    [[nodiscard]] std::string NameText(std::uint32_t identifier, NameTextMode mode,
                                       std::size_t limit = kNameTextLimit) const;

private:
    /// Copies the text to where it stays.
    std::string_view Keep(std::string_view text);

    std::unordered_map<std::string_view, std::uint32_t, SeededHash> identifiers_;
    std::vector<std::unique_ptr<char[]>> storage_;  // the characters of the names, in blocks that never move
    std::span<char> freeStorage_;                   // what is left of the newest block
    std::vector<std::string_view> texts_;           // by identifier; 0 is the empty place of "no name"
};

}  // namespace zorvan
