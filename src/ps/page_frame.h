// The text around a page's content: comments, setup, rotation, resources, clip and trailer.
#pragma once

#include "api/status.h"
#include "ps/page.h"

namespace zorvan {

/// Runs the content of a page; handed in by the floors above.
using RunPageContent = Status (*)(const Page& page);

/// Writes the whole page, stopping at the first failure.
Status WritePage(const Page& page, RunPageContent runContent);

}  // namespace zorvan
