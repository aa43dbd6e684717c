// Walks the page tree and settles what each page inherits.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "api/status.h"
#include "pdf/object.h"

namespace zorvan {

class PdfFile;

/// x0 y0 x1 y1 in default user space, in the order given, not normalised.
using Box = std::array<float, 4>;

/// A leaf of the page tree with its settled attributes. What is lent is valid during the call that delivers
/// it.
struct PageAttributes {
    PdfObject reference;
    PdfObject dictionary;  // lent
    Box box{};             // the first of `BleedBox`, `CropBox`, `MediaBox` that the page has or inherits
    std::int32_t rotation = 0;
    /// The effective `Resources`: the value as it stands (a reference or a dictionary, lent), null when there
    /// are none.
    PdfObject resources;
    /// Set when a direct dictionary is inherited: the same for every page that inherits this very value.
    std::shared_ptr<const OwnedObject> inheritedResources;
};

class PageReceiver {
public:
    virtual ~PageReceiver() = default;
    virtual void AddPage(const PageAttributes& page) = 0;
};

/// Delivers the pages under `root` (the catalog's `Pages`) in document order. `Count` is not read. What is no
/// page tree node ends the walk with kInvalidDataType, recorded; the pages delivered so far stand.
Status WalkPageTree(const PdfFile& file, PdfObject root, PageReceiver& receiver);

}  // namespace zorvan
