// Form XObjects: contents that are defined once and executed by name.
#pragma once

#include <memory>

#include "content/resource_uses.h"
#include "ps/resource_scope.h"

namespace zorvan {

class FormXObject : public PaintedUse {
public:
    /// `stream` is the form's stream.
    FormXObject(ResourceKey key, OwnedObject stream);

    /// Writes what the form names, and the form as a resource of the category Form.
    Status WriteResource() override;
    void AppendUse(OutputPiece& piece) const override { AppendResourceName(piece, Key()); }
    Status RegisterUsed() override;
    void MarkDrawn() override;
    /// Executes it.
    Status Paint(ContentKind kind) override;

private:
    Status WriteContent(const ResourceScope* scope);
    /// The form's own resources, or, in old files, those of what it is drawn on.
    [[nodiscard]] const ResourceScope* Scope() const;

    OwnedObject stream_;
    std::unique_ptr<ResourceScope> scope_;  // null without resources of its own
};

}  // namespace zorvan
