// Writing embedded data.
#include "ps/embedded_data.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "api/current_job.h"
#include "api/error_record.h"
#include "pdf/codec.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/pdf_file.h"
#include "pdf/stream_reader.h"
#include "ps/device_parameters.h"
#include "ps/output.h"

namespace zorvan {
namespace {

/// Data of this size and more does not fit into a string of every device.
constexpr std::size_t kStringLimit = 65536;

/// Behind an array of strings: the index goes round after 81 of them, whatever their number. The prolog hands
/// each out once.
constexpr std::string_view kCycle = "\n} _i get /_i _i 1 add 81 mod def}\n/_i 0\nID \n";

bool IsDeviceFilter(const StreamFilter& filter) {
    return DecoderKindOf(filter.name) != CodecKind::kNone;
}

void AppendFilterName(OutputPiece& piece, const StreamFilter& filter) {
    piece.Append("/").Append(CurrentNames().PlainText(filter.name));
}

void AppendOneFilter(OutputPiece& piece, const StreamFilter& filter) {
    AppendFilterName(piece.Append("/Filter "), filter);
    piece.Append("\n");
    if (Is(filter.decodeParms, ObjectType::kDictionary)) {
        AppendFilterParameters(piece.Append("/DecodeParms "), filter.decodeParms);
    }
}

void AppendFilters(OutputPiece& piece, const std::vector<StreamFilter>& filters) {
    piece.Append("/Filter [");
    for (const StreamFilter& filter : filters) {
        AppendFilterName(piece.Append(&filter == &filters.front() ? "" : " "), filter);
    }
    piece.Append("]\n");
    const bool any = std::ranges::any_of(
        filters, [](const StreamFilter& filter) { return Is(filter.decodeParms, ObjectType::kDictionary); });
    if (!any) {
        return;
    }
    piece.Append("/DecodeParms [");
    for (const StreamFilter& filter : filters) {
        AppendFilterParameters(piece.Append(&filter == &filters.front() ? "" : " "), filter.decodeParms);
    }
    piece.Append("]");
}

/// The device reads them line by line, and a line has 255 bytes.
void AppendFilterCalls(OutputPiece& piece, const std::vector<StreamFilter>& filters) {
    constexpr std::size_t kInLine = 8;
    for (std::size_t i = 0; i < filters.size(); ++i) {
        piece.Append(i > 0 && i % kInLine == 0 ? "\n" : "");
        AppendFilterName(piece, filters[i]);
        piece.Append(" filter");
    }
}

constexpr std::string_view kEndData = "\n%%EndData\n";

/// Data of the file is taken piece by piece, and each piece let go of, so that a large image does not fill
/// the memory.
constexpr std::size_t kPiece = std::size_t{1} << 20;

bool Holds(Bytes data, std::string_view text) {
    while (data.size() >= text.size()) {
        const Bytes piece = data.first(std::min(kPiece, data.size()));
        if (FindForward(piece, 0, text) != kNotFound) {
            return true;
        }
        CurrentPdfFile()->LetGo(piece);
        data = data.subspan(piece.size() - (text.size() - 1));  // it may begin in one and end in the next
    }
    return false;
}

/// True for data that holds the line by which the device knows its end: what stands behind it would run as a
/// program.
bool EndsTooEarly(Bytes data) {
    return Holds(data, kEndData);
}

template <class Take>
Status InPieces(Bytes data, const Take& take) {
    while (!data.empty()) {
        const Bytes piece = data.first(std::min(kPiece, data.size()));
        CurrentPdfFile()->Charge(piece.size());
        RETURN_IF_FAILED(take(piece));
        CurrentPdfFile()->LetGo(piece);
        data = data.subspan(piece.size());
    }
    return Status::kOk;
}

Status WriteRaw(Bytes data) {
    return InPieces(data, [](Bytes piece) { return WriteOutput(piece); });
}

/// In lines of 72 digits, with the mark at the end.
Status WriteHexadecimal(Bytes bytes) {
    CurrentPdfFile()->Charge(bytes.size());
    Codec encoder(CodecKind::kASCIIHexDecodeEncoder, WriteEncoded);
    RETURN_IF_FAILED(encoder.EncodeChunk(bytes));
    return encoder.EndEncoding();
}

std::uint32_t HexadecimalLength(std::uint32_t bytes) {
    return 2 * bytes + 2 * bytes / 72 + 1;
}

/// The data compressed, since it must end by a mark of its own.
Status Compress(const StreamReader& reader, const Codec::Sink& sink) {
    Codec encoder(CodecKind::kLZWDecodeEncoder, sink);
    RETURN_IF_FAILED(InPieces(reader.Raw(), [&](Bytes bytes) { return encoder.EncodeChunk(bytes); }));
    return encoder.EndEncoding();
}

/// The same of what compressing makes of it, found by doing so once more.
bool CompressedEndsTooEarly(const StreamReader& reader) {
    std::string latest;
    bool found = false;
    static_cast<void>(Compress(reader, [&](std::string_view bytes) {
        latest.append(bytes);
        found = found || latest.find(kEndData) != std::string::npos;
        latest.erase(0, latest.size() - std::min(latest.size(), kEndData.size() - 1));
        return Status::kOk;
    }));
    return found;
}

/// Hosts know a compressed block by the fixed count: it does not measure the data.
Status EmbedCompressed(const StreamReader& reader, DataIntent intent) {
    OutputPiece piece;
    piece.Append(" currentfile <</Filter /LZWDecode /Intent ")
        .AppendInteger(static_cast<std::int32_t>(intent))
        .Append(">> /ReusableStreamDecode\n%%BeginData: 256 Bytes\nfilter\n");
    RETURN_IF_FAILED(piece.Write());
    RETURN_IF_FAILED(Compress(reader, WriteEncoded));
    return WriteOutput(kEndData);
}

/// A stream as it goes out: as it stands, or in hexadecimal digits when it holds the line that would end it.
class PassedData {
public:
    PassedData(const StreamReader& reader, bool hexadecimal)
        : reader_(reader), hexadecimal_(hexadecimal), filters_(reader.Filters()) {
        if (hexadecimal_) {
            filters_.insert(filters_.begin(),
                            StreamFilter{.name = names::kASCIIHexDecode, .decodeParms = MakeNull()});
        }
    }

    [[nodiscard]] const std::vector<StreamFilter>& Filters() const { return filters_; }
    [[nodiscard]] std::uint32_t Count() const {
        return hexadecimal_ ? HexadecimalLength(reader_.Length()) : reader_.Length();
    }
    [[nodiscard]] Status Write() const {
        return hexadecimal_ ? WriteHexadecimal(reader_.Raw()) : WriteRaw(reader_.Raw());
    }

private:
    const StreamReader& reader_;
    bool hexadecimal_;
    std::vector<StreamFilter> filters_;
};

Status EmbedPassed(const PassedData& data, DataIntent intent) {
    OutputPiece piece;
    piece.Append(" currentfile <<");
    if (data.Filters().size() == 1) {
        AppendOneFilter(piece, data.Filters().front());
    } else {
        AppendFilters(piece, data.Filters());
    }
    piece.Append("/Intent ")
        .AppendInteger(static_cast<std::int32_t>(intent))
        .Append(" >> /ReusableStreamDecode\n%%BeginData: ")
        .AppendUnsigned(data.Count())
        .Append(" Bytes\nfilter\n");
    RETURN_IF_FAILED(piece.Write());
    RETURN_IF_FAILED(data.Write());
    return WriteOutput(kEndData);
}

std::string_view Opening(CodecKind encoderKind) {
    return encoderKind == CodecKind::kASCIIHexDecodeEncoder ? "<" : "<~";
}

/// One encoder serves all strings: each ends with its own end of data. The first one is opened already.
Status WriteStrings(Bytes bytes, std::size_t length, CodecKind encoderKind) {
    Codec encoder(encoderKind, WriteEncoded);
    do {
        const Bytes piece = bytes.first(std::min(length, bytes.size()));
        RETURN_IF_FAILED(encoder.EncodeChunk(piece));
        RETURN_IF_FAILED(encoder.EndEncoding());
        bytes = bytes.subspan(piece.size());
        if (!bytes.empty()) {
            RETURN_IF_FAILED(WriteOutput(Opening(encoderKind)));
        }
    } while (!bytes.empty());
    return Status::kOk;
}

}  // namespace

bool HasDeviceFilters(PdfObject stream) {
    return std::ranges::all_of(StreamReader(stream).Filters(), IsDeviceFilter);
}

Status EmbedStream(PdfObject stream, PdfObject reference, DataIntent intent) {
    const StreamReader reader(stream);
    if (reader.Filters().empty()) {
        return CompressedEndsTooEarly(reader) ? EmbedPassed({reader, true}, intent)
                                              : EmbedCompressed(reader, intent);
    }
    if (!std::ranges::all_of(reader.Filters(), IsDeviceFilter)) {
        return Fail(Status::kDecodeError, reference);
    }
    return EmbedPassed({reader, EndsTooEarly(reader.Raw())}, intent);
}

Status EmbedInFile(PdfObject stream, std::string_view closing) {
    const StreamReader reader(stream);
    if (reader.Filters().empty() && !CompressedEndsTooEarly(reader)) {
        RETURN_IF_FAILED(WriteOutput(" currentfile /LZWDecode filter\n%%BeginData: 256 Bytes\n"));
        RETURN_IF_FAILED(Compress(reader, WriteEncoded));
        RETURN_IF_FAILED(WriteOutput(closing));
        return WriteOutput(kEndData);
    }
    // The device looks for the closing text behind the data, too.
    const std::string_view closingWords = closing.substr(0, closing.find_last_not_of('\n') + 1);
    const bool hexadecimal =
        reader.Filters().empty() || EndsTooEarly(reader.Raw()) || Holds(reader.Raw(), closingWords);
    const PassedData data(reader, hexadecimal);
    OutputPiece piece;
    AppendFilterCalls(piece.Append(" currentfile"), data.Filters());
    piece.Append("\n%%BeginData:").AppendUnsigned(data.Count()).Append(" Bytes\n");
    RETURN_IF_FAILED(piece.Write());
    RETURN_IF_FAILED(data.Write());
    RETURN_IF_FAILED(WriteOutput(kEndData));
    return WriteOutput(closing);
}

Status EmbedCountedString(Bytes bytes) {
    const auto count = static_cast<std::uint32_t>(bytes.size());
    OutputPiece piece;
    piece.Append(" currentfile ")
        .AppendUnsigned(count)
        .Append(" string\n%%BeginData:")
        .AppendUnsigned(count)
        .Append(" Bytes\n{readstring pop} bind exec\n");
    RETURN_IF_FAILED(piece.Write());
    RETURN_IF_FAILED(WriteOutput(bytes));
    return WriteOutput(kEndData);
}

Status EmbedStrings(Bytes bytes) {
    if (bytes.size() < kStringLimit) {
        return EmbedAscii85String(bytes);
    }
    RETURN_IF_FAILED(WriteOutput("{{<~"));
    RETURN_IF_FAILED(WriteStrings(bytes, kStringLimit, CodecKind::kASCII85DecodeEncoder));
    return WriteOutput(kCycle);
}

Status EmbedInlineData(Bytes bytes, CodecKind encoderKind) {
    constexpr std::size_t kInlineString = 65535;  // a string is to hold it
    RETURN_IF_FAILED(WriteOutput("/DataSource {{"));
    RETURN_IF_FAILED(WriteOutput(Opening(encoderKind)));
    RETURN_IF_FAILED(WriteStrings(bytes, std::min(kInlineString, bytes.size()), encoderKind));
    return WriteOutput(bytes.size() <= kInlineString ? "} 0 get}\n" : kCycle);
}

Status EmbedAscii85String(Bytes bytes) {
    RETURN_IF_FAILED(WriteOutput("<~"));
    return WriteStrings(bytes, bytes.size(), CodecKind::kASCII85DecodeEncoder);
}

}  // namespace zorvan
