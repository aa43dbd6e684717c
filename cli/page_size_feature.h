// The DSC feature block that asks the device for a page's size.
#pragma once

#include <string>

#include "cli/box.h"

namespace zorvan::cli {

// The block for a page whose visible box is `box`: a %%BeginFeature: *PageSize request and, where the box's
// lower-left corner is not the origin already, its move there. Empty when a side is under 1 or over 14,400
// points (the largest page of PDF Reference 1.7, Appendix C): such a box is empty, or no media can be it, and
// the device's own page stands.
std::string PageSizeFeature(const Box& box);

}  // namespace zorvan::cli
