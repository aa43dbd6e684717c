// Which class an XObject becomes.
#pragma once

#include <memory>

#include "ps/resource.h"

namespace zorvan {

/// Null when the value is no stream, or its `Subtype` is none of Image, Form and PS.
std::unique_ptr<Resource> CreateXObjectResource(const ResourceRequest& request);

}  // namespace zorvan
