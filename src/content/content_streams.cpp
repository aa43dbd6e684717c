// Getting at the data of contents.
#include "content/content_streams.h"

#include "api/error_record.h"
#include "pdf/object_parser.h"
#include "pdf/pdf_file.h"

namespace zorvan {

Status ForEachContentStream(PdfObject contents, const ContentStreamTaker& take) {
    const Resolved value(contents);
    if (Is(value.Get(), ObjectType::kStream)) {
        return take(ReferenceOrNull(contents), value.Get());
    }
    for (std::uint32_t i = 0; i < ArrayCount(value.Get()); ++i) {
        const PdfObject element = ArrayGet(value.Get(), i);
        if (!IsReference(element)) {
            continue;  // a direct stream is passed over
        }
        const Resolved stream(element);
        if (Is(stream.Get(), ObjectType::kStream)) {
            RETURN_IF_FAILED(take(element, stream.Get()));
        }
    }
    return Status::kOk;
}

Status DecodedContent::Decode(PdfObject stream, PdfObject reference) {
    if (StreamReader(stream).IsCutShort()) {
        RecordError(Status::kDataNotEnough, reference);
    }
    const Status status = DecodeUnrecorded(stream);
    RecordError(status, reference);
    return status;
}

Status DecodedContent::DecodeUnrecorded(PdfObject stream) {
    StreamReader reader(stream);
    if (reader.Filters().empty() && reader.IsInFile()) {
        data_ = reader.Raw();  // in place in the mapped file
        return Status::kOk;
    }
    const Status status = DecodeStream(reader, decoded_);
    data_ = decoded_.Bytes();
    return status;
}

}  // namespace zorvan
