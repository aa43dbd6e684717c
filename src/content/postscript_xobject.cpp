// Passing PostScript through.
#include "content/postscript_xobject.h"

#include "pdf/byte_buffer.h"
#include "pdf/lexer.h"
#include "pdf/stream_reader.h"

namespace zorvan {

Status PostScriptXObject::Paint(ContentKind /*kind*/) {
    ByteBuffer text;
    StreamReader reader(stream_.Get());
    // Recorded; what was decoded before the damage counts.
    static_cast<void>(DecodeWholeStream(reader, MakeReference(Key().number, Key().generation), text));
    const Bytes bytes = text.Bytes();
    // Fonts of old drivers: they would take what follows on the page for their own.
    if (bytes.empty() || StandsAt(bytes, 0, "currentfile eexec")) {
        return Status::kOk;
    }
    RETURN_IF_FAILED(WriteOutput(bytes));
    return IsPdfWhitespace(bytes.back()) ? Status::kOk : WriteOutput("\n");
}

}  // namespace zorvan
