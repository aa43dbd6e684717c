// Writing composite fonts.
#include "fonts/type0_font.h"

#include "api/error_record.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/device_parameters.h"

namespace zorvan {

Type0FontResource::Type0FontResource(FontSource source, std::unique_ptr<CIDFontResource> descendant)
    : FontResource(std::move(source), font_kind::kType0), descendant_(std::move(descendant)) {
    const PdfObject encoding = DictGet(Dictionary(), names::kEncoding);
    const Resolved value(encoding);
    if (Is(value.Get(), ObjectType::kName)) {
        predefined_.emplace(NameOf(value.Get()));
    } else if (IsReference(encoding)) {
        embedded_ = {ResourceCategory::kCMap, encoding};
    }
}

Status Type0FontResource::RegisterUsed() {
    embedded_.Register();
    return Status::kOk;
}

const CMapResource* Type0FontResource::EmbeddedCMap() const {
    return static_cast<const CMapResource*>(embedded_.Get());
}

Status Type0FontResource::WriteResource() {
    RETURN_IF_FAILED(descendant_->WriteResource());
    RETURN_IF_FAILED(embedded_.EmitIfNeeded());
    if (!predefined_ && EmbeddedCMap() == nullptr) {
        return Fail(Status::kMemoryNotEnough, Reference());
    }
    if (descendant_->Kind() == font_kind::kCIDFontType2) {
        RETURN_IF_FAILED(WriteType0Text(static_cast<CIDFontType2Resource&>(*descendant_)));
    }
    return WriteComposingLine();
}

Status Type0FontResource::WriteType0Text(CIDFontType2Resource& font) const {
    if (!predefined_) {
        OutputPiece name;
        AppendResourceName(name, EmbeddedCMap()->Key());
        return font.WriteType0Dictionary(name.View().substr(1), false);
    }
    if (!predefined_->IsIdentity()) {
        return font.WriteType0Dictionary(predefined_->Name(), false);
    }
    const bool vertical = predefined_->WritingMode() == 1;
    RETURN_IF_FAILED(font.WriteGeneratedCMap(vertical));
    return font.WriteType0Dictionary(font.GeneratedCMapName(), vertical);
}

Status Type0FontResource::WriteComposingLine() const {
    OutputPiece line;
    AppendUse(line);
    const std::string name(descendant_->FontName());
    AppendStringText(line.Append(" "), name + "-T0");
    line.Append(" ");
    if (predefined_) {
        line.Append("/").Append(predefined_->Name()).Append(" ");
    } else {
        EmbeddedCMap()->AppendUse(line);
    }
    AppendStringText(line.Append(" ["), name);
    line.Append("] ");
    descendant_->Collection().AppendName(line);
    line.Append("[ /").Append(descendant_->Style()).Append(" ]  ");
    line.AppendUnsigned(predefined_ ? predefined_->WritingMode() : EmbeddedCMap()->WritingMode());
    return line.Append(" ").AppendReal(descendant_->VerticalAdjustment()).Append(" TZzero\n").Write();
}

std::unique_ptr<Resource> CreateType0Font(FontSource source) {
    const Resolved descendants(DictGet(source.dictionary.Get(), names::kDescendantFonts));
    std::unique_ptr<CIDFontResource> descendant = CreateCIDFont(ArrayGet(descendants.Get(), 0));
    if (descendant == nullptr) {
        return nullptr;
    }
    return std::make_unique<Type0FontResource>(std::move(source), std::move(descendant));
}

}  // namespace zorvan
