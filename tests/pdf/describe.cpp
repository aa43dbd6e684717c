// Writing values down.
#include "pdf/describe.h"

#include <sstream>

#include "api/current_job.h"
#include "pdf/name_table.h"

namespace zorvan::test {
namespace {

std::string DescribeReal(PdfObject object) {
    std::ostringstream text;
    text << NumberOf(object) << 'r';
    return text.str();
}

std::string DescribeName(std::uint32_t identifier) {
    return "/" + std::string(CurrentNames().PlainText(identifier));
}

std::string DescribeOperator(std::uint32_t code) {
    std::string text = "op:";
    for (unsigned shift = 32; shift > 0; shift -= 8) {
        const auto letter = static_cast<char>((code >> (shift - 8)) & 0xFFU);
        if (letter != 0) {
            text += letter;
        }
    }
    return text;
}

std::string DescribeString(PdfObject object) {
    const std::string text = TextOf(StringBytes(object));
    return StringKindOf(object) == StringKind::kLiteral ? "(" + text + ")" : "<" + text + ">";
}

std::string DescribeDictionary(PdfObject object) {
    std::string text;
    for (std::uint32_t i = 0; i < DictSlotCount(object); ++i) {
        const DictionarySlot slot = DictSlot(object, i);
        text += i == 0 ? "" : " ";
        text += slot.key == 0 ? "-" : DescribeName(slot.key) + " " + Describe(slot.value);
    }
    return "<<" + text + ">>";
}

std::string DescribeArray(PdfObject object) {
    std::string text;
    for (std::uint32_t i = 0; i < ArrayCount(object); ++i) {
        text += i == 0 ? "" : " ";
        text += Describe(ArrayGet(object, i));
    }
    return "[" + text + "]";
}

std::string DescribeStream(PdfObject object) {
    return "stream@" + std::to_string(StreamDataOffset(object)) + "+" + std::to_string(StreamLength(object)) +
           Describe(StreamDictionary(object));
}

}  // namespace

std::span<const std::uint8_t> BytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string TextOf(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string Describe(PdfObject object) {
    if (IsReference(object)) {
        return std::to_string(object.payload) + " " + std::to_string(object.type) + " R";
    }
    switch (TypeOf(object)) {
        case ObjectType::kNull:
            return "null";
        case ObjectType::kInteger:
            return std::to_string(IntegerOf(object));
        case ObjectType::kReal:
            return DescribeReal(object);
        case ObjectType::kBoolean:
            return BooleanOf(object) ? "true" : "false";
        case ObjectType::kName:
            return DescribeName(object.payload);
        case ObjectType::kMark:
            return "mark";
        case ObjectType::kOperator:
            return DescribeOperator(object.payload);
        case ObjectType::kString:
            return DescribeString(object);
        case ObjectType::kDictionary:
            return DescribeDictionary(object);
        case ObjectType::kArray:
            return DescribeArray(object);
        case ObjectType::kStream:
            return DescribeStream(object);
    }
    return "unassigned type";
}

}  // namespace zorvan::test
