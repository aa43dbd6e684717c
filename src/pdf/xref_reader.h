// Finds the newest cross-reference section and reads it and every older one.
#pragma once

#include <cstdint>
#include <unordered_set>

#include "api/status.h"
#include "pdf/byte_scan.h"
#include "pdf/pdf_file.h"

namespace zorvan {

/// Strict and simple on purpose: it trusts the last "%%EOF", the number before it and entries of 20 bytes,
/// and rebuilds nothing by scanning for objects.
class XrefReader {
public:
    XrefReader(const PdfFile& file, XrefTable& table, TrailerEntries& trailer)
        : file_(file), bytes_(file.Bytes()), table_(table), trailer_(trailer), budget_(bytes_.size()) {}

    /// kIllegalPdfFile, recorded, when there is no "%%EOF"; whatever else is missing ends the reading with
    /// what was read.
    Status ReadChain();

private:
    [[nodiscard]] std::uint64_t NewestSection(std::size_t endMarker) const;
    [[nodiscard]] OwnedObject TrailerDictionary(std::size_t position) const;
    void TakeTrailer(PdfObject dictionary);
    void TakeIdentifiers(PdfObject array);

    [[nodiscard]] std::size_t PlaceOf(std::uint64_t offset) const;
    /// Reads one section; the position behind its "trailer", or kNotFound when it has none.
    std::size_t ReadSection(std::uint64_t offset);
    std::size_t ReadSubsection(std::size_t position);
    void AddEntry(std::size_t position, std::uint64_t number);
    [[nodiscard]] std::size_t SkipBlanksAndComments(std::size_t position) const;
    [[nodiscard]] static std::uint64_t PreviousSection(PdfObject trailerDictionary);

    const PdfFile& file_;
    Bytes bytes_;
    XrefTable& table_;
    TrailerEntries& trailer_;
    /// Sections do not overlap in a sound file, so that all of them together are no longer than the file.
    std::size_t budget_;
    std::unordered_set<std::uint64_t, SeededHash> visited_;
};

}  // namespace zorvan
