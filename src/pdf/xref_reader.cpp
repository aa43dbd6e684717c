// The cross-reference sections of the file, newest first.
#include "pdf/xref_reader.h"

#include <algorithm>

#include "api/error_record.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"

namespace zorvan {
namespace {

constexpr std::string_view kEndMarker = "%%EOF";
constexpr std::string_view kTrailer = "trailer";
constexpr std::size_t kEntrySize = 20;
constexpr std::size_t kNumberLimit = 32;

/// The last "%%EOF" of the file, wherever it stands, or kNotFound. The header is not looked at.
std::size_t FindEndMarker(Bytes bytes) {
    for (std::size_t last = bytes.size(); last > kEndMarker.size() + 1; --last) {
        if (bytes[last - 1] == 'F' && StandsAt(bytes, last - kEndMarker.size(), kEndMarker)) {
            return last - kEndMarker.size();
        }
    }
    return kNotFound;
}

unsigned HexDigit(std::uint8_t byte) {
    if (byte >= '0' && byte <= '9') {
        return byte - unsigned{'0'};
    }
    const std::uint8_t lower = byte | 0x20U;
    return lower >= 'a' && lower <= 'f' ? lower - unsigned{'a'} + 10 : 0;
}

/// 32 hexadecimal digits as 16 bytes. The raw text of any string is read so, a literal string's too:
/// identifiers are compared with keys that were made in just this way.
FileIdentifier ReadIdentifier(Bytes text) {
    FileIdentifier identifier{};
    const std::size_t digits = std::min(text.size(), identifier.size() * 2);
    for (std::size_t i = 0; i < digits; ++i) {
        const unsigned shift = i % 2 == 0 ? 4 : 0;
        identifier[i / 2] |= static_cast<std::uint8_t>(HexDigit(text[i]) << shift);
    }
    return identifier;
}

}  // namespace

Status XrefReader::ReadChain() {
    const std::size_t endMarker = FindEndMarker(bytes_);
    if (endMarker == kNotFound) {
        return Fail(Status::kIllegalPdfFile);
    }
    const std::uint64_t newest = NewestSection(endMarker);
    std::uint64_t previous = 0;
    {
        const OwnedObject dictionary = TrailerDictionary(FindForward(bytes_, PlaceOf(newest), kTrailer));
        TakeTrailer(dictionary.Get());
        previous = PreviousSection(dictionary.Get());
    }
    visited_.insert(newest);
    ReadSection(newest);
    while (previous != 0 && visited_.insert(previous).second) {
        const std::size_t trailer = ReadSection(previous);
        const OwnedObject dictionary =
            TrailerDictionary(trailer == kNotFound ? trailer : trailer - kTrailer.size());
        previous = PreviousSection(dictionary.Get());
    }
    return Status::kOk;
}

std::uint64_t XrefReader::NewestSection(std::size_t endMarker) const {
    std::size_t end = endMarker;
    while (end > 0 && IsStructureBlank(bytes_[end - 1])) {
        --end;
    }
    std::size_t start = end;
    while (start > 0 && bytes_[start - 1] >= '0' && bytes_[start - 1] <= '9') {
        --start;
    }
    return ReadDecimal(bytes_, start, std::min(end - start, kNumberLimit));
}

OwnedObject XrefReader::TrailerDictionary(std::size_t position) const {
    if (position == kNotFound) {
        return {};
    }
    OwnedObject trailer(ParseObjectAt(file_, static_cast<std::uint32_t>(position + kTrailer.size())));
    return Is(trailer.Get(), ObjectType::kDictionary) ? std::move(trailer) : OwnedObject();
}

void XrefReader::TakeTrailer(PdfObject dictionary) {
    if (IsNull(dictionary)) {
        return;
    }
    const PdfObject size = DictGet(dictionary, names::kSize);
    const auto mostEntries = static_cast<std::uint32_t>(bytes_.size() / kEntrySize + 1);
    table_.SetSize(Is(size, ObjectType::kInteger) ? PayloadOf(size) : 0, mostEntries);
    trailer_.info = ReferenceOrNull(DictGet(dictionary, names::kInfo));
    trailer_.root = ReferenceOrNull(DictGet(dictionary, names::kRoot));
    TakeIdentifiers(DictGet(dictionary, names::kID));
    const PdfObject encrypt = DictGet(dictionary, names::kEncrypt);
    trailer_.encrypted = !IsNull(encrypt);
    trailer_.encrypt = OwnedObject(CloneObject(encrypt));
}

void XrefReader::TakeIdentifiers(PdfObject array) {
    for (std::uint32_t i = 0; i < trailer_.identifiers.size(); ++i) {
        trailer_.identifiers[i] = ReadIdentifier(StringBytes(ArrayGet(array, i)));
    }
}

std::uint64_t XrefReader::PreviousSection(PdfObject trailerDictionary) {
    return static_cast<std::uint64_t>(std::max(0, IntegerOf(DictGet(trailerDictionary, names::kPrev))));
}

// The file's end for what lies beyond, which a size need not be able to tell.
std::size_t XrefReader::PlaceOf(std::uint64_t offset) const {
    return static_cast<std::size_t>(std::min<std::uint64_t>(offset, bytes_.size()));
}

std::size_t XrefReader::ReadSection(std::uint64_t offset) {
    if (offset >= bytes_.size()) {
        return kNotFound;
    }
    const std::size_t start = SkipStructureBlanks(bytes_, PlaceOf(offset));
    if (!StandsAt(bytes_, start, "xref")) {
        return kNotFound;
    }
    std::size_t position = SkipStructureBlanks(bytes_, start + 4);
    while (position < bytes_.size() && position - start <= budget_) {
        if (StandsAt(bytes_, position, kTrailer)) {
            budget_ -= position - start;
            return position + kTrailer.size();
        }
        position = SkipBlanksAndComments(ReadSubsection(position));
    }
    budget_ = 0;
    return kNotFound;
}

std::size_t XrefReader::ReadSubsection(std::size_t position) {
    std::uint64_t heading[2];  // first object number, number of entries
    for (std::uint64_t& number : heading) {
        const std::size_t start = position;
        while (position < bytes_.size() && position - start < kNumberLimit &&
               !IsStructureBlank(bytes_[position])) {
            ++position;
        }
        number = ReadDecimal(bytes_, start, position - start);
        position = SkipStructureBlanks(bytes_, position);
    }
    // Above 32 bits a number is no object's; cut to there, counting on from it never comes round to 0.
    const std::uint64_t first = std::min(heading[0], std::uint64_t{1} << 32U);
    const std::uint64_t room = (bytes_.size() - position) / kEntrySize;
    const std::uint64_t count = std::min(heading[1], room);
    for (std::uint64_t i = 0; i < count; ++i, position += kEntrySize) {
        AddEntry(position, first + i);
    }
    return position;
}

void XrefReader::AddEntry(std::size_t position, std::uint64_t number) {
    constexpr std::size_t kOffsetDigits = 10;
    constexpr std::size_t kGenerationPlace = 11;
    constexpr std::size_t kGenerationDigits = 5;
    constexpr std::size_t kKindPlace = 17;
    if (bytes_[position + kKindPlace] != 'n' || number > UINT32_MAX) {
        return;
    }
    const std::uint64_t offset = ReadDecimal(bytes_, position, kOffsetDigits);
    const std::uint64_t generation = ReadDecimal(bytes_, position + kGenerationPlace, kGenerationDigits);
    // An object beyond the file is no object, but its entry still hides an older one: 0 is such an offset.
    table_.Add(static_cast<std::uint32_t>(number), static_cast<std::uint16_t>(generation),
               offset < bytes_.size() ? static_cast<std::uint32_t>(offset) : 0);
}

std::size_t XrefReader::SkipBlanksAndComments(std::size_t position) const {
    position = SkipStructureBlanks(bytes_, position);
    while (position < bytes_.size() && bytes_[position] == '%') {
        while (position < bytes_.size() && bytes_[position] != '\r' && bytes_[position] != '\n') {
            ++position;
        }
        position = SkipStructureBlanks(bytes_, position);
    }
    return position;
}

}  // namespace zorvan
