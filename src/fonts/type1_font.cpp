// Writing Type 1 fonts.
#include "fonts/type1_font.h"

#include <string>

#include "api/current_job.h"
#include "fonts/compact_program.h"
#include "fonts/font_program.h"
#include "fonts/type1_program.h"
#include "pdf/name_table.h"

namespace zorvan {
namespace {

/// The selector of TZ: one of the prolog's encodings, or the font's own.
std::string_view SelectorOf(BaseEncoding base) {
    switch (base) {
        case BaseEncoding::kMacRoman:
            return " 0 TZ\n";
        case BaseEncoding::kWinAnsi:
            return " 1 TZ\n";
        default:
            return " -1 TZ\n";
    }
}

}  // namespace

Type1FontResource::Type1FontResource(FontSource source) : FontResource(std::move(source), font_kind::kType1) {
    SetNameFrom(names::kBaseFont);
    const PdfObject encoding = DictGet(Dictionary(), names::kEncoding);
    if (!IsNull(encoding)) {
        encoding_.emplace(encoding);
    }
    // FontFile2 is not looked at: a device takes no TrueType program for a font of this type.
    program_ = DescriptorEntry(Dictionary(), names::kFontFile);
    programKind_ = ProgramKind::kType1;
    if (IsNull(program_.Get())) {
        program_ = DescriptorEntry(Dictionary(), names::kFontFile3);
        programKind_ = IsNull(program_.Get()) ? ProgramKind::kNone : ProgramKind::kCompact;
    }
}

Status Type1FontResource::WriteResource() {
    std::string name = Name();
    if (programKind_ != ProgramKind::kNone) {
        OutputPiece title;
        RETURN_IF_FAILED(title.Append("%%BeginResource: font ").Append(name).Append("\n").Write());
        RETURN_IF_FAILED(WriteProgram(name));
        RETURN_IF_FAILED(WriteOutput("%%EndResource\n"));
    }
    return WriteEncodingLine(name);
}

Status Type1FontResource::WriteProgram(std::string& name) const {
    if (programKind_ == ProgramKind::kType1) {
        return WriteType1Program(program_.Get(), Reference());
    }
    std::string declared;
    const Status status = WriteCompactProgram(program_.Get(), Reference(), declared);
    if (!declared.empty()) {
        // The name under which the device has defined it.
        NameTable& names = CurrentNames();
        name = "/" + names.NameText(names.InternName(declared), NameTextMode::kToken);
    }
    return status;
}

Status Type1FontResource::WriteEncodingLine(std::string_view name) const {
    OutputPiece line;
    if (encoding_ && encoding_->NeedsDifferences()) {
        RETURN_IF_FAILED(WriteOutput("[ "));
        RETURN_IF_FAILED(encoding_->WriteDifferences());
        AppendUse(line);
        return line.Append(" ").Append(name).Append(" -1 TZ\n").Write();
    }
    line.Append("[");
    AppendUse(line);
    return line.Append(" ")
        .Append(name)
        .Append(SelectorOf(encoding_ ? encoding_->Base() : BaseEncoding::kFontOwn))
        .Write();
}

}  // namespace zorvan
