// One page of the document as the page list keeps it.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "pdf/object.h"
#include "pdf/page_tree.h"
#include "ps/resource_scope.h"

namespace zorvan {

/// The appearance of a form field, which is drawn over the page.
struct Annotation {
    PdfObject appearance;                  // the reference of its stream
    Box rectangle{};                       // x0 y0 width height, in the page's user space
    std::shared_ptr<ResourceScope> scope;  // null without resources
};

struct Page {
    PdfObject reference;
    std::uint32_t number = 0;              // 1-based place in the page list
    Box clipBox{};                         // in the page's own user space
    std::int32_t rotation = 0;             // degrees, -359 to 359
    std::shared_ptr<ResourceScope> scope;  // null without resources; shared by pages that share a dictionary
    std::vector<Annotation> annotations;
};

/// The box after rotation: the clip box, with width and height exchanged at its lower left corner when the
/// rotation is no multiple of 180 (which is so for rotations that are no multiple of 90, too).
Box VisibleBox(const Page& page);

/// The smallest box around two boxes.
Box UnitedBox(const Box& one, const Box& other);

}  // namespace zorvan
