// The text around the pages: header, prolog, end of the setup, trailer.
#pragma once

#include <cstdint>

#include "api/status.h"
#include "pdf/page_tree.h"
#include "ps/prolog.h"

namespace zorvan {

struct DocumentSummary {
    Box boundingBox{};  // the union of the pages' visible boxes; zeros without pages
    std::uint32_t pageCount = 0;
};

/// Writes the header comments and the prolog. kApplicationError, recorded, and nothing written, without a
/// prolog.
Status WriteHeaderAndProlog(const DocumentSummary& document, const Prolog* prolog);

/// Writes the global resources and closes the setup section.
Status WriteGlobalResources();

Status WriteDocumentTrailer();

}  // namespace zorvan
