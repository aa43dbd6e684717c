// Open Prepress Interface comments, version 1.3 and 2.0: they name a high-resolution image that a server
// downstream puts in place of what stands between them.
#pragma once

#include "api/status.h"
#include "pdf/object.h"

namespace zorvan {

class OpiBracket {
public:
    /// Looks for an `OPI` entry in the dictionary of a form or image, which must outlive the bracket.
    explicit OpiBracket(PdfObject dictionary);

    /// Both write nothing where there is no such entry, or one of another version.
    Status Begin() const;
    Status End() const;

private:
    enum class Version { kNone, k13, k20 };

    Version version_ = Version::kNone;
    OwnedObject entries_;  // the version's dictionary
};

}  // namespace zorvan
