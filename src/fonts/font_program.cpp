// Getting at the bytes of a font program.
#include "fonts/font_program.h"

#include <algorithm>

#include "api/current_job.h"
#include "api/error_record.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/pdf_file.h"
#include "pdf/stream_reader.h"

namespace zorvan {

OwnedObject DescriptorEntry(PdfObject fontDictionary, std::uint32_t key) {
    const Resolved descriptor(DictGet(fontDictionary, names::kFontDescriptor));
    const PdfObject value = DictGet(descriptor.Get(), key);
    return IsNull(Resolved(value).Get()) ? OwnedObject() : OwnedObject(CloneObject(value));
}

Status FontProgram::Load(PdfObject value, PdfObject font) {
    stream_ = OwnedObject(CloneObject(Resolved(value).Get()));
    if (!Is(stream_.Get(), ObjectType::kStream)) {
        return Fail(Status::kInvalidDataType, font);
    }
    StreamReader reader(stream_.Get());
    return DecodeWholeStream(reader, IsReference(value) ? value : font, data_);
}

std::size_t FontProgram::LengthEntry(std::uint32_t key) const {
    const Resolved length(DictGet(StreamDictionary(stream_.Get()), key));
    return static_cast<std::size_t>(std::max(IntegerOf(length.Get()), 0));
}

}  // namespace zorvan
