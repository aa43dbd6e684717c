// The text around a page's content: comments, setup, rotation, resources, clip and trailer.
#pragma once

#include "api/status.h"
#include "ps/page.h"

namespace zorvan {

/// What the floors above do for a page; each gets its `Contents` value, lent.
struct PageContent {
    /// Tells what the page draws that it is drawn.
    void (*markDrawn)(const Page& page, PdfObject contents);
    /// Writes what the appearances of its annotations name.
    Status (*emitAnnotationResources)(const Page& page);
    Status (*run)(const Page& page, PdfObject contents);
    Status (*runAnnotations)(const Page& page);
};

/// Writes the whole page, stopping at the first failure.
Status WritePage(const Page& page, const PageContent& content);

}  // namespace zorvan
