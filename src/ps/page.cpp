// Page boxes.
#include "ps/page.h"

#include <algorithm>

namespace zorvan {

Box VisibleBox(const Page& page) {
    const auto [x0, y0, x1, y1] = page.clipBox;
    if (page.rotation % 180 == 0) {
        return page.clipBox;
    }
    return {x0, y0, x0 + (y1 - y0), y0 + (x1 - x0)};
}

Box UnitedBox(const Box& one, const Box& other) {
    return {std::min(one[0], other[0]), std::min(one[1], other[1]), std::max(one[2], other[2]),
            std::max(one[3], other[3])};
}

}  // namespace zorvan
