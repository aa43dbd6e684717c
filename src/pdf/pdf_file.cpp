// Opening an input file, step by step; the first failure ends it.
#include "pdf/pdf_file.h"

#include <algorithm>

#include "api/current_job.h"
#include "api/error_record.h"
#include "pdf/allocation_registry.h"
#include "pdf/byte_scan.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/xref_reader.h"

namespace zorvan {
namespace {

bool HasHeader(Bytes bytes) {
    return StandsAt(bytes, 0, "%PDF-") || StandsAt(bytes, 0, "%JTF-");
}

}  // namespace

Password::Password(const ZORVAN_PasswordRecord* record) {
    if (record != nullptr) {
        length = std::min<std::uint32_t>(record->length, sizeof record->text);
        std::copy_n(record->text, length, text.begin());
    }
}

Status PdfFile::OpenPdfFile(const std::string& path) {
    if (!mapped_.Map(path)) {
        return Fail(Status::kOpenFileError);
    }
    RenewBudget();
    CurrentAllocations().SetLimit(static_cast<std::size_t>(std::min<std::uint64_t>(
        limits::kObjectBytes + limits::kObjectBytesPerByte * Bytes().size(), SIZE_MAX)));
    if (!HasHeader(Bytes())) {
        return Fail(Status::kIllegalPdfFile);
    }
    return ReadStructure();
}

Status PdfFile::ReadStructure() {
    XrefReader reader(*this, xref_, trailer_);
    RETURN_IF_FAILED(reader.ReadChain());
    if (trailer_.encrypted) {
        RETURN_IF_FAILED(security_.InitSecurity(*this, trailer_.encrypt.Get(), trailer_.identifiers[0],
                                                password_.Bytes()));
    }
    return ReadCatalog();
}

Status PdfFile::ReadCatalog() {
    const OwnedObject catalog(ResolveReference(*this, trailer_.root));
    if (!Is(catalog.Get(), ObjectType::kDictionary)) {
        return Fail(Status::kInvalidDataType, trailer_.root);
    }
    pages_ = ReferenceOrNull(DictGet(catalog.Get(), names::kPages));
    jobTicket_ = ReferenceOrNull(DictGet(catalog.Get(), names::kJT));
    return Status::kOk;
}

}  // namespace zorvan
