// A rectangle in the page's default user space, in points.
#pragma once

namespace zorvan::cli {

struct Box {
    double x0 = 0;
    double y0 = 0;
    double x1 = 0;
    double y1 = 0;

    double Width() const { return x1 - x0; }
    double Height() const { return y1 - y0; }
};

}  // namespace zorvan::cli
