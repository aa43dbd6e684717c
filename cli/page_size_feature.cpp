// Composes the page size request.
#include "cli/page_size_feature.h"

#include "cli/number_text.h"

namespace zorvan::cli {
namespace {

bool IsPageSide(double side) {
    constexpr double kSmallestSide = 1;
    constexpr double kLargestSide = 14400;
    return side >= kSmallestSide && side <= kLargestSide;
}

}  // namespace

// The page's own "save" comes after this block, so the page's "restore" does not take the move back;
// "showpage" does, as it ends in initgraphics, and so does setpagedevice (PLRM 8.2). The move stands outside
// the guard: also on media that the device chose, the page begins at its corner, and does so only once.
std::string PageSizeFeature(const Box& box) {
    if (!IsPageSide(box.Width()) || !IsPageSide(box.Height())) {
        return "";
    }
    const std::string width = NumberText(box.Width());
    const std::string height = NumberText(box.Height());
    const std::string x = NumberText(-box.x0);
    const std::string y = NumberText(-box.y0);
    const std::string move = x == "0" && y == "0" ? "" : x + " " + y + " translate\n";
    return "%%BeginFeature: *PageSize " + width + "x" + height + "\n[{<</PageSize[" + width + " " + height +
           "]/ImagingBBox null>>setpagedevice}stopped cleartomark\n" + move + "%%EndFeature\n";
}

}  // namespace zorvan::cli
