// The PDF value: eight bytes in which every number, name, string, dictionary and reference travels.
#pragma once

#include <bit>
#include <cstdint>
#include <functional>
#include <span>

namespace zorvan {

enum class ObjectType : std::uint16_t {
    kNull = 0,
    kInteger = 1,
    kReal = 2,
    kBoolean = 3,
    kName = 4,
    kMark = 9,
    kOperator = 10,
    kString = 11,
    kDictionary = 12,
    kArray = 13,
    kStream = 14,
};

/// A direct value (tag 0: type and payload) or an indirect reference (tag 0xFFFF: generation and number).
/// Strings, dictionaries, arrays and streams live in blocks of the job's AllocationRegistry; the payload is
/// then the block's handle, which is 32 bits wide where an address is not.
struct PdfObject {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;
    std::uint32_t payload = 0;

    bool operator==(const PdfObject&) const = default;
};
static_assert(sizeof(PdfObject) == 8);

constexpr std::uint16_t kReferenceTag = 0xFFFF;

enum class StringKind : std::uint16_t { kLiteral = 0, kHexadecimal = 1 };

// --- values without a block ---

constexpr PdfObject MakeScalar(ObjectType type, std::uint32_t payload) {
    return {0, static_cast<std::uint16_t>(type), payload};
}
constexpr PdfObject MakeNull() {
    return {};
}
constexpr PdfObject MakeInteger(std::int32_t value) {
    return MakeScalar(ObjectType::kInteger, static_cast<std::uint32_t>(value));
}
constexpr PdfObject MakeReal(float value) {
    return MakeScalar(ObjectType::kReal, std::bit_cast<std::uint32_t>(value));
}
constexpr PdfObject MakeBoolean(bool value) {
    return MakeScalar(ObjectType::kBoolean, value ? 1 : 0);
}
constexpr PdfObject MakeName(std::uint32_t identifier) {
    return MakeScalar(ObjectType::kName, identifier);
}
constexpr PdfObject MakeMark() {
    return MakeScalar(ObjectType::kMark, 0);
}
constexpr PdfObject MakeOperator(std::uint32_t code) {
    return MakeScalar(ObjectType::kOperator, code);
}
constexpr PdfObject MakeReference(std::uint32_t number, std::uint16_t generation) {
    return {kReferenceTag, generation, number};
}

constexpr bool IsReference(PdfObject object) {
    return object.tag != 0;
}
/// One number for a number and a generation, to look them up by.
constexpr std::uint64_t ReferenceKey(std::uint32_t number, std::uint16_t generation) {
    return (std::uint64_t{number} << 16U) | generation;
}
constexpr PdfObject StripTag(PdfObject object) {
    return {0, object.type, object.payload};
}

/// The type of a direct value; a reference is of no type and reads as null.
constexpr ObjectType TypeOf(PdfObject object) {
    return IsReference(object) ? ObjectType::kNull : static_cast<ObjectType>(object.type);
}
constexpr bool Is(PdfObject object, ObjectType type) {
    return !IsReference(object) && TypeOf(object) == type;
}
constexpr bool IsNumber(PdfObject object) {
    return Is(object, ObjectType::kInteger) || Is(object, ObjectType::kReal);
}
constexpr bool IsNull(PdfObject object) {
    return object == PdfObject{};
}
constexpr bool HasBlock(PdfObject object) {
    return !IsReference(object) && object.type >= static_cast<std::uint16_t>(ObjectType::kString);
}

/// Integer value, name identifier, operator code or object number; 0 for a value that lives in a block, so
/// that a handle never leaves the process as a number.
constexpr std::uint32_t PayloadOf(PdfObject object) {
    return HasBlock(object) ? 0 : object.payload;
}

/// The identifier of a name; 0, which is no name, for anything else.
constexpr std::uint32_t NameOf(PdfObject object) {
    return Is(object, ObjectType::kName) ? object.payload : 0;
}

/// The value as a 32-bit float; 0 for anything that is not a number.
constexpr float NumberOf(PdfObject object) {
    if (Is(object, ObjectType::kInteger)) {
        return static_cast<float>(static_cast<std::int32_t>(object.payload));
    }
    return Is(object, ObjectType::kReal) ? std::bit_cast<float>(object.payload) : 0.0F;
}

/// The value truncated toward zero; out of the 32-bit range it is -2147483648, and 0 when it is no number.
std::int32_t IntegerOf(PdfObject object);

/// Truncates toward zero; what does not fit (NaN included) gives -2147483648.
std::int32_t TruncateToInteger(double value);

constexpr bool BooleanOf(PdfObject object) {
    return Is(object, ObjectType::kBoolean) && object.payload != 0;
}

// --- values with a block: the maker owns the result (see OwnedObject) ---

PdfObject MakeString(std::span<const std::uint8_t> bytes, StringKind kind);
PdfObject NewDictionary(std::uint32_t slots);
PdfObject NewArray(std::uint32_t count);
PdfObject NewStream(std::uint32_t dataOffset, std::uint32_t length, PdfObject dictionary);

// --- accessors: they lend, and a wrong type gives null, 0 or nothing ---

/// The bytes as they stand in the file between the delimiters: escapes and digits are not decoded.
std::span<const std::uint8_t> StringBytes(PdfObject string);
StringKind StringKindOf(PdfObject string);

PdfObject DictGet(PdfObject dictionary, std::uint32_t key);
bool DictHas(PdfObject dictionary, std::uint32_t key);
std::uint32_t DictSlotCount(PdfObject dictionary);
struct DictionarySlot {
    std::uint32_t key = 0;  // 0: the slot is empty
    PdfObject value;
};
DictionarySlot DictSlot(PdfObject dictionary, std::uint32_t index);
/// Stores into the first slot that is empty or has this key, and frees the value that it replaces. A full
/// dictionary takes nothing: false, and the value stays the caller's.
bool DictPut(PdfObject dictionary, std::uint32_t key, PdfObject value);

std::uint32_t ArrayCount(PdfObject array);
PdfObject ArrayGet(PdfObject array, std::uint32_t index);
/// Frees the element that it replaces. Beyond the end it stores nothing: false, and the value stays the
/// caller's.
bool ArraySet(PdfObject array, std::uint32_t index, PdfObject value);

/// Fills a new dictionary or array in one go with what stood behind a mark. A dictionary takes the pairs in
/// order (an odd last value is dropped, a key met again overwrites its first slot) in time linear in their
/// number.
PdfObject MakeDictionary(std::span<const PdfObject> keysAndValues);
PdfObject MakeArray(std::span<const PdfObject> elements);

std::uint32_t StreamDataOffset(PdfObject stream);
std::uint32_t StreamLength(PdfObject stream);
PdfObject StreamDictionary(PdfObject stream);
/// A stream's dictionary, or the value itself: for what may be either.
inline PdfObject DictionaryOf(PdfObject value) {
    return Is(value, ObjectType::kStream) ? StreamDictionary(value) : value;
}
/// The reference of the object that the stream is, by which encrypted data finds its key; null when nobody
/// set it.
PdfObject StreamOwner(PdfObject stream);
void SetStreamOwner(PdfObject stream, PdfObject reference);

/// Puts what `replace` makes of each string inside a value, at any depth, in its place. The value may itself
/// be a string, and the result is then the new one.
PdfObject ReplaceStrings(PdfObject object, const std::function<PdfObject(PdfObject string)>& replace);

// --- ownership ---

/// Frees the block of a value and all that it holds. What has no block, or one that is already gone, is left
/// alone.
void FreeBlocks(PdfObject object) noexcept;
inline void FreeObject(PdfObject object) noexcept {
    if (HasBlock(object)) {
        FreeBlocks(object);
    }
}
/// A deep copy, which the caller owns; references are copied as references.
PdfObject CloneObject(PdfObject object);

/// Holds a value that somebody made, resolved or cloned, and frees it.
class OwnedObject {
public:
    OwnedObject() = default;
    explicit OwnedObject(PdfObject object) : object_(object) {}
    ~OwnedObject() { FreeObject(object_); }
    OwnedObject(OwnedObject&& other) noexcept : object_(other.Release()) {}
    OwnedObject& operator=(OwnedObject&& other) noexcept {
        if (this != &other) {
            FreeObject(object_);
            object_ = other.Release();
        }
        return *this;
    }
    OwnedObject(const OwnedObject&) = delete;
    OwnedObject& operator=(const OwnedObject&) = delete;

    [[nodiscard]] PdfObject Get() const { return object_; }
    /// Hands the value over to the caller.
    PdfObject Release() noexcept {
        const PdfObject object = object_;
        object_ = MakeNull();
        return object;
    }

private:
    PdfObject object_;
};

}  // namespace zorvan
