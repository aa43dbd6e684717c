// Every cap on what a file may ask of the library, each with its reason. A file from anywhere must neither
// crash nor hang the process nor eat the machine, and no file of the trade comes near these.
#pragma once

#include <cstdint>

namespace zorvan::limits {

/// Arrays and dictionaries inside each other. Deeper nesting is -4071; writers do not reach 50.
constexpr std::uint32_t kObjectNesting = 512;

/// `Pages` nodes above a page. A balanced tree of a million pages has 10.
constexpr std::uint32_t kPageTreeDepth = 1024;

/// Nodes of a page tree: 30 objects can otherwise make 2^30 pages by naming each other twice.
constexpr std::uint32_t kPageTreeNodes = 1U << 20;

/// Forms, patterns and glyphs inside each other; the inner one is skipped.
constexpr std::uint32_t kContentNesting = 64;

/// References that lead to references before a value is reached.
constexpr std::uint32_t kReferenceHops = 64;

/// Operands of one content or object, saved colour states, names of a job: a stream of 256 MiB has room for a
/// hundred million of each, and would make a gigabyte of them. Beyond, it is -4088; contents of the trade
/// stay in the hundreds.
constexpr std::uint32_t kOperands = 1U << 23;
constexpr std::uint32_t kSavedColorStates = 1U << 20;
constexpr std::uint32_t kNames = 1U << 22;

/// Elements of a Differences array that are written as they stand: they meet on the device's operand stack. A
/// code and a name for each of the 256 codes are 512.
constexpr std::uint32_t kDifferences = 1024;

/// Numbers of an array whose length the file decides: they meet on the device's operand stack. A decode array
/// has two for each of at most 32 colourants.
constexpr std::uint32_t kNumbers = 256;

/// The same for a function's arrays and parts: a gradient of a thousand stops has two thousand numbers.
constexpr std::uint32_t kFunctionNumbers = 16384;

/// Codes that one font's `cmap` subtables may map before the rest is passed over. All subtables of a font of
/// the trade together stay below a million; overlapping segments can ask for 2^47.
constexpr std::uint32_t kMappedCodes = 1U << 22;

/// Tokens of one procedure, of the 65,535 that a device takes (PLRM, appendix B): beyond, a form's, pattern's
/// or glyph's content is put into procedures of its own, each of about so many bytes.
constexpr std::size_t kProcedureTokens = 60000;
constexpr std::uint64_t kChunkBytes = 32768;

/// Bytes of objects that are held at a time, over and above so many times the file: dictionaries are copied,
/// and a small file can have any number of objects read from one place.
constexpr std::uint64_t kObjectBytes = std::uint64_t{256} << 20;
constexpr std::uint64_t kObjectBytesPerByte = 8;

/// Bytes that one call of the host may read and decode, over and above so many times the file. A page of the
/// trade takes a few million.
constexpr std::uint64_t kSteps = std::uint64_t{512} << 20;
constexpr std::uint64_t kStepsPerByte = 32;

/// Bytes of one decoded stream that must be held whole; more is -4088. A one-megabyte file can otherwise
/// ask for a gigabyte, and a million-operator page decodes to some 30 MiB.
constexpr std::uint64_t kDecodedStream = std::uint64_t{256} << 20;

}  // namespace zorvan::limits
