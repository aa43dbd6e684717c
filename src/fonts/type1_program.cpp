// Taking Type 1 programs apart and writing them.
#include "fonts/type1_program.h"

#include <algorithm>
#include <string_view>

#include "fonts/font_program.h"
#include "pdf/codec.h"
#include "pdf/name_table.h"
#include "ps/output.h"

namespace zorvan {
namespace {

constexpr std::string_view kEexec = "eexec";
/// How far a declared length may be off and still be taken for a slip.
constexpr std::size_t kSlip = 16;

// --- PFB segments: 128, a type (1 text, 2 binary, 3 the end), a length of four bytes, the least first, and
// the data.

constexpr std::uint8_t kSegmentMark = 128;
constexpr std::uint8_t kTextSegment = 1;
constexpr std::uint8_t kBinarySegment = 2;
constexpr std::size_t kSegmentHeader = 6;

bool IsSegment(Bytes rest, std::uint8_t type) {
    return rest.size() >= kSegmentHeader && rest[0] == kSegmentMark && rest[1] == type;
}

std::size_t SegmentLength(Bytes rest) {
    std::size_t length = 0;
    for (std::size_t i = kSegmentHeader; i-- > 2;) {
        length = length << 8U | rest[i];
    }
    return std::min(length, rest.size() - kSegmentHeader);
}

// --- The border between the parts, and the end of the second one.

bool IsSpace(std::uint8_t byte) {
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

/// Where the clear-text part ends.
std::size_t ClearEnd(Bytes program, std::size_t declared) {
    const bool known = declared != 0;
    const std::size_t from = declared - std::min(declared, kSlip + kEexec.size());
    const std::size_t word = FindForward(program, from, kEexec);
    if (word == kNotFound || (known && word > declared + kSlip)) {
        return declared;
    }
    // The encrypted part's first byte is no white space (Adobe Type 1 Font Format, 7.2).
    std::size_t end = word + kEexec.size();
    while (end < program.size() && IsSpace(program[end])) {
        ++end;
    }
    return end;
}

/// Goes back over one line end.
std::size_t BeforeLineEnd(Bytes program, std::size_t end) {
    if (end > 0 && program[end - 1] == '\n') {
        --end;
    }
    return end > 0 && program[end - 1] == '\r' ? end - 1 : end;
}

/// Where the trailer of 512 zeros begins, with the line end in front of it; the program's end when there is
/// none.
std::size_t TrailerBegin(Bytes program) {
    constexpr std::string_view kCleartomark = "cleartomark";
    constexpr int kZeros = 512;
    std::size_t end = program.size();
    while (end > 0 && IsSpace(program[end - 1])) {
        --end;
    }
    if (end < kCleartomark.size() || !StandsAt(program, end - kCleartomark.size(), kCleartomark)) {
        return program.size();
    }
    end -= kCleartomark.size();
    for (int zeros = 0; zeros < kZeros && end > 0 && (IsSpace(program[end - 1]) || program[end - 1] == '0');
         --end) {
        zeros += program[end - 1] == '0' ? 1 : 0;
    }
    return BeforeLineEnd(program, end);
}

// --- Encrypted parts in hexadecimal digits.

int DigitValue(std::uint8_t byte) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto upper = static_cast<char>(byte >= 'a' && byte <= 'f' ? byte - 0x20 : byte);
    const std::size_t place = kDigits.find(upper);
    return place == std::string_view::npos ? -1 : static_cast<int>(place);
}

/// By the interpreters' rule: binary data has a byte among its first four that is no hexadecimal digit.
bool IsHexadecimal(Bytes encrypted) {
    constexpr std::size_t kLookedAt = 4;
    return encrypted.size() >= kLookedAt &&
           std::ranges::all_of(encrypted.first(kLookedAt), [](auto byte) { return DigitValue(byte) >= 0; });
}

void AppendFromHexadecimal(Bytes digits, ByteBuffer& bytes) {
    int high = -1;
    for (const std::uint8_t digit : digits) {
        const int value = DigitValue(digit);
        if (value >= 0 && high >= 0) {
            bytes.Room(1)[0] = static_cast<std::uint8_t>(high * 16 + value);
            bytes.Commit(1);
            high = -1;
        } else if (value >= 0) {
            high = value;
        }
    }
}

Status WriteParts(const Type1Parts& parts) {
    RETURN_IF_FAILED(WriteOutput(parts.Clear()));
    if (parts.Encrypted().empty()) {
        return Status::kOk;
    }
    // The encoder is never told that the data ends: the ">" that it would write is no digit.
    Codec encoder(CodecKind::kASCIIHexDecodeEncoder, WriteEncoded);
    RETURN_IF_FAILED(encoder.EncodeChunk(parts.Encrypted()));
    return WriteOutput("\n");
}

Status WriteTrailer() {
    constexpr std::string_view kZeros = "\r0000000000000000000000000000000000000000000000000000000000000000";
    static_assert(kZeros.size() == 65);
    for (int line = 0; line < 8; ++line) {
        RETURN_IF_FAILED(WriteOutput(kZeros));
    }
    return WriteOutput("\rcleartomark\n");
}

}  // namespace

Type1Parts::Type1Parts(Bytes program, std::size_t length1, std::size_t length2) {
    if (IsSegment(program, kTextSegment)) {
        JoinSegments(program, length1, length2);
    }
    const std::size_t declared = std::min(length1, program.size());
    const std::size_t begin = length1 > program.size() ? declared : ClearEnd(program, declared);
    std::size_t end = declared + std::min(length2, program.size() - declared);
    if (begin != declared || length2 == 0) {
        // One length is wrong, so the other is not relied on where the trailer tells the end.
        const std::size_t trailer = TrailerBegin(program);
        end = trailer != program.size() || length2 == 0 ? trailer : end;
    }
    end = std::max(begin, end);
    clear_ = program.first(begin);
    encrypted_ = program.subspan(begin, end - begin);
    if (IsHexadecimal(encrypted_)) {
        AppendFromHexadecimal(encrypted_, binary_);
        encrypted_ = binary_.Bytes();
    }
}

void Type1Parts::JoinSegments(Bytes& program, std::size_t& length1, std::size_t& length2) {
    Bytes rest = program;
    length1 = JoinSegmentsOfType(rest, kTextSegment);
    length2 = JoinSegmentsOfType(rest, kBinarySegment);
    program = joined_.Bytes();
}

std::size_t Type1Parts::JoinSegmentsOfType(Bytes& rest, std::uint8_t type) {
    const std::size_t before = joined_.Size();
    while (IsSegment(rest, type)) {
        const Bytes data = rest.subspan(kSegmentHeader, SegmentLength(rest));
        std::ranges::copy(data, joined_.Room(data.size()).begin());
        joined_.Commit(data.size());
        rest = rest.subspan(kSegmentHeader + data.size());
    }
    return joined_.Size() - before;
}

Status WriteType1Program(PdfObject value, PdfObject font) {
    FontProgram program;
    RETURN_IF_FAILED(program.Load(value, font));
    if (!program.Data().empty()) {
        RETURN_IF_FAILED(WriteParts(Type1Parts(program.Data(), program.LengthEntry(names::kLength1),
                                               program.LengthEntry(names::kLength2))));
    }
    return WriteTrailer();
}

}  // namespace zorvan
