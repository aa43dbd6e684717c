// Building the page list and writing the document.
#include "api/document.h"

#include "api/current_job.h"
#include "content/annotations.h"
#include "content/drawn_names.h"
#include "content/interpreter.h"
#include "pdf/object_parser.h"
#include "pdf/pdf_file.h"
#include "ps/document_structure.h"
#include "ps/page_frame.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

void MarkDrawn(const Page& page, PdfObject contents) {
    MarkDrawnIn(page.scope.get(), contents);
    MarkDrawnInAnnotations(page);
}

Status RunContent(const Page& page, PdfObject contents) {
    return ContentInterpreter(page.scope.get(), contents, ContentKind::kPage).Run();
}

}  // namespace

void Document::BuildPageList() {
    const PdfFile& file = *CurrentPdfFile();
    // Recorded where it happened; the pages before it are the document.
    static_cast<void>(WalkPageTree(file, file.Pages(), *this));
    scopesByOwner_ = {};
    lastInherited_ = nullptr;
    lastInheritedScope_ = nullptr;
}

void Document::AddPage(const PageAttributes& attributes) {
    Page page;
    page.reference = attributes.reference;
    page.number = PageCount() + 1;
    page.clipBox = attributes.box;
    page.rotation = attributes.rotation;
    CurrentRegistry().SetCurrentPage(page.number);
    page.scope = ScopeOf(attributes);
    if (page.scope != nullptr) {
        page.scope->Register();
    }
    page.annotations = ReadAnnotations(attributes.dictionary);
    const Box visible = VisibleBox(page);
    boundingBox_ = pages_.empty() ? visible : UnitedBox(boundingBox_, visible);
    pages_.push_back(std::move(page));
}

std::shared_ptr<ResourceScope> Document::ScopeOf(const PageAttributes& attributes) {
    const PdfObject value = attributes.resources;
    if (!IsReference(value) && !Is(value, ObjectType::kDictionary)) {
        return nullptr;
    }
    if (attributes.inheritedResources != nullptr && !IsReference(value)) {
        if (attributes.inheritedResources != lastInherited_) {
            lastInheritedScope_ = std::make_shared<ResourceScope>(value);
            lastInherited_ = attributes.inheritedResources;
        }
        return lastInheritedScope_;
    }
    // A direct dictionary belongs to its page, which the tree may name many times.
    const PdfObject owner = IsReference(value) ? value : attributes.reference;
    std::shared_ptr<ResourceScope>& scope = scopesByOwner_[ReferenceKey(owner.payload, owner.type)];
    if (scope == nullptr) {
        scope = std::make_shared<ResourceScope>(Resolved(value).Get());
    }
    return scope;
}

Status Document::WriteHeaderAndProlog(const Prolog* prolog) const {
    return zorvan::WriteHeaderAndProlog({.boundingBox = boundingBox_, .pageCount = PageCount()}, prolog);
}

Status Document::WritePage(std::uint32_t number) const {
    if (number == 0 || number > PageCount()) {
        return Status::kOk;
    }
    CurrentRegistry().SetCurrentPage(number);
    return zorvan::WritePage(pages_[number - 1], {.markDrawn = MarkDrawn,
                                                  .emitAnnotationResources = EmitAnnotationResources,
                                                  .run = RunContent,
                                                  .runAnnotations = RunAnnotations});
}

}  // namespace zorvan
