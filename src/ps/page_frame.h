// The text around a page's content: comments, setup, rotation, resources, clip and trailer.
#pragma once

#include "api/status.h"
#include "ps/page.h"

namespace zorvan {

/// Runs the content of a page, its `Contents` value (lent); handed in by the floors above.
using RunPageContent = Status (*)(const Page& page, PdfObject contents);

/// Writes the whole page, stopping at the first failure.
Status WritePage(const Page& page, RunPageContent runContent);

}  // namespace zorvan
