// PostScript XObjects: text that is passed through.
#pragma once

#include "content/resource_uses.h"

namespace zorvan {

class PostScriptXObject : public PaintedUse {
public:
    PostScriptXObject(ResourceKey key, OwnedObject stream) : PaintedUse(key, 0), stream_(std::move(stream)) {}

    /// There is nothing to define.
    Status WriteResource() override { return Status::kOk; }
    void AppendUse(OutputPiece& /*piece*/) const override {}
    /// Copies the decoded text, unless it is encrypted for a reader of its own.
    Status Paint(ContentKind kind) override;

private:
    OwnedObject stream_;
};

}  // namespace zorvan
