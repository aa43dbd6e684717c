// The token rules.
#include "pdf/lexer.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "pdf/name_table.h"
#include "pdf/operator_code.h"

namespace zorvan {
namespace {

enum ByteClass : std::uint8_t { kRegular = 0, kWhitespace = 1, kDelimiter = 2, kDigit = 4 };

constexpr std::array<std::uint8_t, 256> MakeClasses() {
    std::array<std::uint8_t, 256> classes{};
    for (const std::size_t byte : {0x00U, 0x08U, 0x09U, 0x0AU, 0x0CU, 0x0DU, 0x20U}) {
        classes[byte] = kWhitespace;
    }
    for (const char byte : std::string_view("%()<>[]{}/")) {
        classes[static_cast<std::uint8_t>(byte)] = kDelimiter;
    }
    for (std::uint8_t byte = '0'; byte <= '9'; ++byte) {
        classes[byte] = kDigit;
    }
    return classes;
}

constexpr auto kClasses = MakeClasses();

constexpr bool IsTerminator(std::uint8_t byte) {
    return (kClasses[byte] & (kWhitespace | kDelimiter)) != 0;
}
constexpr bool IsDigit(std::uint8_t byte) {
    return kClasses[byte] == kDigit;
}

/// The value of a digit character, or of what stands where one is taken unseen.
constexpr double DigitValue(std::uint8_t byte) {
    return static_cast<double>(byte) - 48.0;
}

/// Reads forward over the input; past the end it delivers zeros, which giving back undoes.
class Cursor {
public:
    Cursor(std::span<const std::uint8_t> bytes, std::uint32_t position)
        : bytes_(bytes), position_(position) {}

    [[nodiscard]] bool AtEnd() const { return position_ >= bytes_.size(); }
    std::uint8_t Read() {
        const std::uint8_t byte = AtEnd() ? std::uint8_t{0} : bytes_[position_];
        ++position_;
        return byte;
    }
    void GiveBack() { --position_; }
    [[nodiscard]] std::uint32_t Position() const {
        return static_cast<std::uint32_t>(std::min(position_, bytes_.size()));
    }
    [[nodiscard]] std::span<const std::uint8_t> Rest() const { return bytes_.subspan(Position()); }
    /// The bytes from `start` to the cursor.
    [[nodiscard]] std::span<const std::uint8_t> Since(std::uint32_t start) const {
        return bytes_.subspan(start, Position() - start);
    }
    void Advance(std::size_t count) { position_ += count; }

private:
    std::span<const std::uint8_t> bytes_;
    std::size_t position_;
};

void SkipComment(Cursor& cursor) {
    while (!cursor.AtEnd()) {
        const std::uint8_t byte = cursor.Read();
        if (byte == '\r' || byte == '\n') {
            return;
        }
    }
}

std::uint32_t ScanLiteralString(Cursor& cursor, PdfObject& token) {
    const std::uint32_t start = cursor.Position();
    std::uint32_t depth = 1;
    while (!cursor.AtEnd()) {
        const std::uint8_t byte = cursor.Read();
        if (byte == '\\') {
            cursor.Read();
        } else if (byte == '(') {
            ++depth;
        } else if (byte == ')' && --depth == 0) {
            const auto withParenthesis = cursor.Since(start);
            token = MakeString(withParenthesis.first(withParenthesis.size() - 1), StringKind::kLiteral);
            return lex::kToken;
        }
    }
    return lex::kError;
}

/// The digit's value; any other byte counts with its own.
constexpr unsigned HexValue(std::uint8_t byte) {
    if (IsDigit(byte)) {
        return byte - unsigned{'0'};
    }
    if (byte >= 'a' && byte <= 'f') {
        return byte - unsigned{'a'} + 10;
    }
    return byte >= 'A' && byte <= 'F' ? byte - unsigned{'A'} + 10 : byte;
}

std::uint8_t ReadEscapedByte(Cursor& cursor) {
    const unsigned high = HexValue(cursor.Read());
    const unsigned low = HexValue(cursor.Read());
    return static_cast<std::uint8_t>(high * 16 + low);
}

constexpr std::uint8_t Printable(std::uint8_t byte) {
    return byte < 0x20 ? std::uint8_t{'$'} : byte;
}

std::uint32_t ScanName(Cursor& cursor, NameTable& names, PdfObject& token) {
    constexpr std::size_t kLimit = 128;  // of bytes counted, the terminator among them
    std::array<char, kLimit> text;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled as far as used
    std::size_t count = 0;
    bool terminated = false;
    while (!terminated && !cursor.AtEnd()) {
        std::uint8_t byte = cursor.Read();
        if (byte == '#') {
            byte = Printable(ReadEscapedByte(cursor));
        } else if (IsTerminator(byte)) {
            terminated = true;
        } else {
            byte = Printable(byte);
        }
        text[count++] = static_cast<char>(byte);
        if (count == kLimit) {
            return lex::kError;
        }
    }
    if (terminated) {
        cursor.GiveBack();
        --count;
    }
    token = MakeName(names.InternName({text.data(), count}));
    return terminated ? lex::kToken : lex::kToken | lex::kEnd;
}

std::uint32_t ScanAngle(Cursor& cursor, PdfObject& token) {
    const auto text = cursor.Rest();
    if (!text.empty() && text[0] == '<') {
        cursor.Advance(1);
        token = MakeMark();
        return lex::kToken;
    }
    // A `>` that is the very last byte of the input belongs to the text: the input ended first.
    const auto searched = text.empty() ? text : text.first(text.size() - 1);
    const auto end = std::ranges::find(searched, std::uint8_t{'>'});
    if (end != searched.end()) {
        const auto length = static_cast<std::size_t>(end - searched.begin());
        token = MakeString(text.first(length), StringKind::kHexadecimal);
        cursor.Advance(length + 1);
        return lex::kToken;
    }
    token = MakeString(text, StringKind::kHexadecimal);
    cursor.Advance(text.size());
    return lex::kToken | lex::kEnd;
}

/// digit / 10^place, as the division gives it: looked up because dividing costs more than all the rest.
struct FractionTable {
    static constexpr int kPlaces = 12;
    std::array<std::array<double, 10>, kPlaces> value{};
    constexpr FractionTable() {
        double divisor = 10.0;
        for (auto& row : value) {
            for (int digit = 0; digit < 10; ++digit) {
                row[static_cast<std::size_t>(digit)] = digit / divisor;
            }
            divisor *= 10.0;
        }
    }
};
constexpr FractionTable kFractions;

/// Takes the digits behind a point. The first byte is taken for a digit without a look: "1.x" is a real.
double ScanFraction(Cursor& cursor, std::uint8_t& byte) {
    byte = cursor.Read();
    double fraction = DigitValue(byte) / 10.0;
    double divisor = 10.0;
    for (std::size_t place = 1; !cursor.AtEnd(); ++place) {
        byte = cursor.Read();
        if (!IsDigit(byte)) {
            break;
        }
        divisor *= 10.0;
        fraction += place < kFractions.kPlaces ? kFractions.value[place][byte - std::size_t{'0'}]
                                               : DigitValue(byte) / divisor;
    }
    return fraction;
}

/// Scans a number whose first byte is `byte`. Only a magnitude below 32767 with a fraction makes a real; what
/// else has a point is cut to an integer: "5.0" is 5 and "40000.5" is 40000, which the number text relies on.
PdfObject ScanNumber(Cursor& cursor, std::uint8_t byte) {
    const bool negative = byte == '-';
    if (negative || byte == '+') {
        byte = cursor.Read();
    }
    double magnitude = 0.0;
    if (byte != '.') {
        magnitude = DigitValue(byte);  // taken for a digit without a look
        while (!cursor.AtEnd()) {
            byte = cursor.Read();
            if (!IsDigit(byte)) {
                break;
            }
            magnitude = magnitude * 10.0 + DigitValue(byte);
        }
    }
    double fraction = 0.0;
    if (byte == '.') {
        fraction = ScanFraction(cursor, byte);
    }
    if (!IsDigit(byte)) {
        cursor.GiveBack();
    }
    if (magnitude < 32767.0 && fraction > 0.0) {
        const double value = magnitude + fraction;
        return MakeReal(static_cast<float>(negative ? -value : value));
    }
    return MakeInteger(TruncateToInteger(negative ? -magnitude : magnitude));
}

/// Scans a keyword whose first byte stands right before the cursor. A stray `)`, `{` or `}` gives code 0 and
/// is not consumed.
std::uint32_t ScanWord(Cursor& cursor, std::uint8_t byte, PdfObject& token) {
    constexpr int kLimit = 128;  // of bytes read after the first
    const std::uint32_t start = cursor.Position() - 1;
    int count = 0;
    while (!IsTerminator(byte) && !cursor.AtEnd() && count < kLimit) {
        byte = cursor.Read();
        ++count;
    }
    if (count == kLimit) {
        return lex::kError;
    }
    const bool terminated = IsTerminator(byte);
    if (terminated) {
        cursor.GiveBack();
    }
    const auto word = cursor.Since(start);
    token = MakeOperator(OperatorCode({reinterpret_cast<const char*>(word.data()), word.size()}));
    return terminated ? lex::kToken : lex::kToken | lex::kEnd;
}

std::uint32_t ScanAt(Cursor& cursor, std::uint8_t byte, NameTable& names, PdfObject& token) {
    const std::uint32_t end = cursor.AtEnd() ? lex::kEnd : lex::kNothing;
    if (IsDigit(byte) || byte == '.' || byte == '-' || byte == '+') {
        token = ScanNumber(cursor, byte);
        return lex::kToken | end;
    }
    switch (byte) {
        case '%':
            SkipComment(cursor);
            return end;
        case '(':
            return ScanLiteralString(cursor, token);
        case '/':
            return ScanName(cursor, names, token);
        case '<':
            return ScanAngle(cursor, token);
        case '>':
            token = MakeOperator(OperatorCode(">>"));
            return cursor.Read() == '>' ? lex::kToken : lex::kError;
        case '[':
            token = MakeMark();
            return lex::kToken;
        case ']':
            token = MakeOperator(OperatorCode("]"));
            return lex::kToken;
        default:
            return ScanWord(cursor, byte, token);
    }
}

}  // namespace

bool IsPdfWhitespace(std::uint8_t byte) {
    return kClasses[byte] == kWhitespace;
}

bool IsPdfRegular(std::uint8_t byte) {
    return !IsTerminator(byte);
}

std::uint32_t ScanToken(std::span<const std::uint8_t> bytes, NameTable& names, PdfObject& token,
                        std::uint32_t& consumed) {
    std::uint32_t position = 0;
    while (position < bytes.size() && kClasses[bytes[position]] == kWhitespace) {
        ++position;
    }
    if (position == bytes.size()) {
        consumed = position;
        return lex::kEnd;
    }
    Cursor cursor(bytes, position + 1);
    const std::uint32_t status = ScanAt(cursor, bytes[position], names, token);
    consumed = cursor.Position();
    return status;
}

}  // namespace zorvan
