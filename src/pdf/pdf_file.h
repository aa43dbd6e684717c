// The open input file: its mapped bytes, its cross-reference table and what its trailer and catalog say.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "api/status.h"
#include "pdf/object.h"
#include "pdf/security.h"
#include "pdf/xref_table.h"
#include "platform/limits.h"
#include "platform/mapped_file.h"
#include "platform/step_budget.h"
#include "zorvan/zorvan.h"

namespace zorvan {

/// The host's password, copied: at most 40 bytes; empty when none was given.
struct Password {
    std::array<char, sizeof(ZORVAN_PasswordRecord::text)> text{};
    std::uint32_t length = 0;

    explicit Password(const ZORVAN_PasswordRecord* record);
    [[nodiscard]] std::vector<std::uint8_t> Bytes() const { return {text.begin(), text.begin() + length}; }
};

/// What the newest trailer tells, and the chain of sections behind it.
struct TrailerEntries {
    PdfObject info;  // these two are references, or null
    PdfObject root;
    std::array<FileIdentifier, 2> identifiers{};
    bool encrypted = false;
    OwnedObject encrypt;
};

class PdfFile {
public:
    explicit PdfFile(const ZORVAN_PasswordRecord* password) : password_(password) {}

    /// Maps the file and reads header, cross-reference chain, trailer and catalog. Every failure is recorded:
    /// kOpenFileError, kIllegalPdfFile, kUnknownSecurityHandler, kCheckPassword, kInvalidDataType (the
    /// catalog).
    Status OpenPdfFile(const std::string& path);

    [[nodiscard]] std::span<const std::uint8_t> Bytes() const { return mapped_.Bytes(); }
    /// Tells that these bytes of the file are done with for now.
    void LetGo(std::span<const std::uint8_t> bytes) const { mapped_.LetGo(bytes); }
    [[nodiscard]] const XrefTable& Xref() const { return xref_; }
    [[nodiscard]] const TrailerEntries& Trailer() const { return trailer_; }
    /// A new call of the host may cost as much again.
    void RenewBudget() { budget_.Renew(limits::kSteps + limits::kStepsPerByte * Bytes().size()); }
    /// Counts work on the file; see StepBudget.
    void Charge(std::uint64_t steps) const { budget_.Charge(steps); }
    [[nodiscard]] bool Take(std::uint64_t steps) const noexcept { return budget_.Take(steps); }
    /// Inactive for a file that is not encrypted.
    [[nodiscard]] const SecurityState& Security() const { return security_; }
    /// The catalog's `Pages` value: the reference of the page tree's root, or null.
    [[nodiscard]] PdfObject Pages() const { return pages_; }
    /// The catalog's `JT` value, likewise.
    [[nodiscard]] PdfObject JobTicket() const { return jobTicket_; }

private:
    Status ReadStructure();
    Status ReadCatalog();

    Password password_;
    MappedFile mapped_;
    XrefTable xref_;
    TrailerEntries trailer_;
    SecurityState security_;
    mutable StepBudget budget_;
    PdfObject pages_;
    PdfObject jobTicket_;
};

/// The value itself when it is a reference, else null: a direct value dies with the dictionary that holds it.
constexpr PdfObject ReferenceOrNull(PdfObject value) {
    return IsReference(value) ? value : MakeNull();
}

}  // namespace zorvan
