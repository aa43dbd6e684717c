// The block layouts behind strings, dictionaries, arrays and streams.
#include "pdf/object.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <unordered_map>
#include <vector>

#include "api/current_job.h"
#include "pdf/allocation_registry.h"
#include "platform/seeded_hash.h"

namespace zorvan {
namespace {

// Counts are 32 bits wide, so that what a hostile or merely large file holds neither wraps nor gets lost.
struct StringBlock {
    std::uint32_t kind;
    std::uint32_t length;
};
struct DictionaryBlock {
    std::uint32_t slots;
    std::uint32_t unused;
};
struct ArrayBlock {
    std::uint32_t count;
    std::uint32_t unused;
};
struct StreamBlock {
    std::uint32_t dataOffset;
    std::uint32_t length;
    PdfObject dictionary;
    PdfObject owner;
};

template <class Block>
Block* BlockOf(PdfObject object, ObjectType type) {
    if (!Is(object, type)) {
        return nullptr;
    }
    return reinterpret_cast<Block*>(CurrentAllocations().Address(object.payload));
}

StringBlock* StringBlockOf(PdfObject object) {
    return BlockOf<StringBlock>(object, ObjectType::kString);
}
DictionaryBlock* DictionaryBlockOf(PdfObject object) {
    return BlockOf<DictionaryBlock>(object, ObjectType::kDictionary);
}
ArrayBlock* ArrayBlockOf(PdfObject object) {
    return BlockOf<ArrayBlock>(object, ObjectType::kArray);
}
StreamBlock* StreamBlockOf(PdfObject object) {
    return BlockOf<StreamBlock>(object, ObjectType::kStream);
}

std::span<DictionarySlot> SlotsOf(DictionaryBlock* block) {
    return {reinterpret_cast<DictionarySlot*>(block + 1), block->slots};
}
std::span<PdfObject> ElementsOf(ArrayBlock* block) {
    return {reinterpret_cast<PdfObject*>(block + 1), block->count};
}

template <class Block>
PdfObject NewBlock(ObjectType type, std::size_t extra, Block*& block) {
    const PdfObject object = MakeScalar(type, CurrentAllocations().Allocate(sizeof(Block) + extra));
    block = BlockOf<Block>(object, type);
    return object;
}

DictionarySlot* FindSlot(PdfObject dictionary, std::uint32_t key) {
    DictionaryBlock* block = DictionaryBlockOf(dictionary);
    if (block == nullptr) {
        return nullptr;
    }
    const auto slots = SlotsOf(block);
    const auto slot =
        std::find_if(slots.begin(), slots.end(), [key](const auto& each) { return each.key == key; });
    return slot == slots.end() ? nullptr : &*slot;
}

/// Pairs of a dictionary up to which their keys are searched; beyond (100,000 are real in hostile files)
/// looked up.
constexpr std::size_t kSearchedPairs = 32;

/// The slot of each pair: the one that has its key already, else the first empty one. Key 0 marks an empty
/// slot, so that the next pair overwrites such a pair, whatever its own key.
void AssignSlots(std::span<const PdfObject> keysAndValues, std::span<std::uint32_t> slots) {
    std::unordered_map<std::uint32_t, std::uint32_t, SeededHash> slotOfKey;
    std::uint32_t used = 0;
    for (std::size_t pair = 0; pair < slots.size(); ++pair) {
        const std::uint32_t key = PayloadOf(keysAndValues[pair * 2]);
        slots[pair] = used;
        if (key == 0) {
            continue;
        }
        if (slots.size() > kSearchedPairs) {
            slots[pair] = slotOfKey.emplace(key, used).first->second;
        } else {
            for (std::size_t before = 0; before < pair; ++before) {
                if (PayloadOf(keysAndValues[before * 2]) == key) {
                    slots[pair] = slots[before];
                    break;
                }
            }
        }
        used += slots[pair] == used ? 1U : 0U;
    }
}

/// Calls `visit` with every value inside the block of `object`.
template <class Visit>
void ForEachInside(PdfObject object, Visit visit) {
    if (DictionaryBlock* dictionary = DictionaryBlockOf(object)) {
        for (DictionarySlot& slot : SlotsOf(dictionary)) {
            visit(slot.value);
        }
    } else if (ArrayBlock* array = ArrayBlockOf(object)) {
        for (PdfObject& element : ElementsOf(array)) {
            visit(element);
        }
    } else if (StreamBlock* stream = StreamBlockOf(object)) {
        visit(stream->dictionary);
    }
}

/// Copies a block byte for byte: what it holds still is the original's.
PdfObject CopyBlock(PdfObject object) {
    if (const StringBlock* string = StringBlockOf(object)) {
        return MakeString(StringBytes(object), static_cast<StringKind>(string->kind));
    }
    if (DictionaryBlockOf(object) != nullptr) {
        const PdfObject copy = NewDictionary(DictSlotCount(object));
        std::ranges::copy(SlotsOf(DictionaryBlockOf(object)), SlotsOf(DictionaryBlockOf(copy)).begin());
        return copy;
    }
    if (ArrayBlockOf(object) != nullptr) {
        const PdfObject copy = NewArray(ArrayCount(object));
        std::ranges::copy(ElementsOf(ArrayBlockOf(object)), ElementsOf(ArrayBlockOf(copy)).begin());
        return copy;
    }
    if (StreamBlockOf(object) != nullptr) {
        const PdfObject copy =
            NewStream(StreamDataOffset(object), StreamLength(object), StreamDictionary(object));
        SetStreamOwner(copy, StreamOwner(object));
        return copy;
    }
    return MakeNull();
}

}  // namespace

std::int32_t TruncateToInteger(double value) {
    constexpr double kBelow = -2147483649.0;
    constexpr double kAbove = 2147483648.0;
    return value > kBelow && value < kAbove ? static_cast<std::int32_t>(value)
                                            : std::numeric_limits<std::int32_t>::min();
}

std::int32_t IntegerOf(PdfObject object) {
    if (Is(object, ObjectType::kInteger)) {
        return static_cast<std::int32_t>(object.payload);
    }
    return TruncateToInteger(NumberOf(object));
}

PdfObject MakeString(std::span<const std::uint8_t> bytes, StringKind kind) {
    StringBlock* block = nullptr;
    const PdfObject string = NewBlock(ObjectType::kString, bytes.size(), block);
    block->kind = static_cast<std::uint32_t>(kind);
    block->length = static_cast<std::uint32_t>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<std::uint8_t*>(block + 1));
    return string;
}

PdfObject NewDictionary(std::uint32_t slots) {
    DictionaryBlock* block = nullptr;
    const PdfObject dictionary =
        NewBlock(ObjectType::kDictionary, std::size_t{slots} * sizeof(DictionarySlot), block);
    block->slots = slots;
    return dictionary;
}

PdfObject NewArray(std::uint32_t count) {
    ArrayBlock* block = nullptr;
    const PdfObject array = NewBlock(ObjectType::kArray, std::size_t{count} * sizeof(PdfObject), block);
    block->count = count;
    return array;
}

PdfObject NewStream(std::uint32_t dataOffset, std::uint32_t length, PdfObject dictionary) {
    StreamBlock* block = nullptr;
    const PdfObject stream = NewBlock(ObjectType::kStream, 0, block);
    *block = {dataOffset, length, dictionary, MakeNull()};
    return stream;
}

std::span<const std::uint8_t> StringBytes(PdfObject string) {
    const StringBlock* block = StringBlockOf(string);
    if (block == nullptr) {
        return {};
    }
    return {reinterpret_cast<const std::uint8_t*>(block + 1), block->length};
}

StringKind StringKindOf(PdfObject string) {
    const StringBlock* block = StringBlockOf(string);
    return block == nullptr ? StringKind::kLiteral : static_cast<StringKind>(block->kind);
}

PdfObject DictGet(PdfObject dictionary, std::uint32_t key) {
    const DictionarySlot* slot = FindSlot(dictionary, key);
    return slot == nullptr ? MakeNull() : slot->value;
}

bool DictHas(PdfObject dictionary, std::uint32_t key) {
    return FindSlot(dictionary, key) != nullptr;
}

std::uint32_t DictSlotCount(PdfObject dictionary) {
    const DictionaryBlock* block = DictionaryBlockOf(dictionary);
    return block == nullptr ? 0 : block->slots;
}

DictionarySlot DictSlot(PdfObject dictionary, std::uint32_t index) {
    DictionaryBlock* block = DictionaryBlockOf(dictionary);
    return block == nullptr || index >= block->slots ? DictionarySlot{} : SlotsOf(block)[index];
}

bool DictPut(PdfObject dictionary, std::uint32_t key, PdfObject value) {
    DictionaryBlock* block = DictionaryBlockOf(dictionary);
    if (block == nullptr) {
        return false;
    }
    for (DictionarySlot& slot : SlotsOf(block)) {
        if (slot.key == key || slot.key == 0) {
            FreeObject(slot.value);
            slot = {key, value};
            return true;
        }
    }
    return false;
}

std::uint32_t ArrayCount(PdfObject array) {
    const ArrayBlock* block = ArrayBlockOf(array);
    return block == nullptr ? 0 : block->count;
}

PdfObject ArrayGet(PdfObject array, std::uint32_t index) {
    ArrayBlock* block = ArrayBlockOf(array);
    return block == nullptr || index >= block->count ? MakeNull() : ElementsOf(block)[index];
}

bool ArraySet(PdfObject array, std::uint32_t index, PdfObject value) {
    ArrayBlock* block = ArrayBlockOf(array);
    if (block == nullptr || index >= block->count) {
        return false;
    }
    FreeObject(ElementsOf(block)[index]);
    ElementsOf(block)[index] = value;
    return true;
}

PdfObject MakeDictionary(std::span<const PdfObject> keysAndValues) {
    // A key may be any value: its payload counts, as a name's identifier does. What can run out of memory
    // comes first; from then on the values move, and nothing may fail.
    const std::size_t pairs = keysAndValues.size() / 2;
    std::array<std::uint32_t, kSearchedPairs> few{};
    std::vector<std::uint32_t> many(pairs > few.size() ? pairs : 0);
    const std::span<std::uint32_t> slotOfPair = many.empty() ? std::span(few).first(pairs) : std::span(many);
    AssignSlots(keysAndValues, slotOfPair);
    const PdfObject dictionary = NewDictionary(static_cast<std::uint32_t>(pairs));
    const auto slots = SlotsOf(DictionaryBlockOf(dictionary));
    for (std::size_t pair = 0; pair < pairs; ++pair) {
        DictionarySlot& slot = slots[slotOfPair[pair]];
        FreeObject(slot.value);
        slot = {PayloadOf(keysAndValues[pair * 2]), keysAndValues[pair * 2 + 1]};
    }
    for (std::size_t i = 0; i < keysAndValues.size(); i += 2) {
        FreeObject(keysAndValues[i]);  // the keys, and an odd last value
    }
    return dictionary;
}

PdfObject MakeArray(std::span<const PdfObject> elements) {
    const PdfObject array = NewArray(static_cast<std::uint32_t>(elements.size()));
    std::ranges::copy(elements, ElementsOf(ArrayBlockOf(array)).begin());
    return array;
}

std::uint32_t StreamDataOffset(PdfObject stream) {
    const StreamBlock* block = StreamBlockOf(stream);
    return block == nullptr ? 0 : block->dataOffset;
}

std::uint32_t StreamLength(PdfObject stream) {
    const StreamBlock* block = StreamBlockOf(stream);
    return block == nullptr ? 0 : block->length;
}

PdfObject StreamDictionary(PdfObject stream) {
    const StreamBlock* block = StreamBlockOf(stream);
    return block == nullptr ? MakeNull() : block->dictionary;
}

PdfObject StreamOwner(PdfObject stream) {
    const StreamBlock* block = StreamBlockOf(stream);
    return block == nullptr ? MakeNull() : block->owner;
}

void SetStreamOwner(PdfObject stream, PdfObject reference) {
    if (StreamBlock* block = StreamBlockOf(stream)) {
        block->owner = reference;
    }
}

PdfObject ReplaceStrings(PdfObject object, const std::function<PdfObject(PdfObject string)>& replace) {
    if (Is(object, ObjectType::kString)) {
        const PdfObject made = replace(object);
        FreeObject(object);
        return made;
    }
    ForEachInside(object, [&replace](PdfObject& inner) {
        if (HasBlock(inner)) {
            inner = ReplaceStrings(inner, replace);
        }
    });
    return object;
}

void FreeBlocks(PdfObject object) noexcept {
    AllocationRegistry& blocks = CurrentAllocations();
    // Values inside values are chained by the words beside their blocks: no recursion and no memory needed.
    std::uint32_t pending = 0;
    const auto chain = [&blocks, &pending](PdfObject inner) {
        if (HasBlock(inner) && blocks.Address(inner.payload) != nullptr) {
            blocks.SetLink(inner.payload, pending, inner.type);
            pending = inner.payload;
        }
    };
    chain(object);
    while (pending != 0) {
        const std::uint32_t handle = pending;
        pending = blocks.Link(handle);
        ForEachInside(PdfObject{0, blocks.Type(handle), handle}, chain);
        blocks.Release(handle);
    }
}

PdfObject CloneObject(PdfObject object) {
    if (!HasBlock(object)) {
        return object;
    }
    struct Place {
        PdfObject* target;
        PdfObject source;
    };
    std::vector<Place> places;
    PdfObject root;
    // A copied block holds the original's blocks until they are copied in turn. They are taken out at once,
    // with the room for that made beforehand, so that running out of memory never frees the original with the
    // copy.
    const auto copyInto = [&places](PdfObject& target, PdfObject source) {
        std::size_t inside = 0;
        ForEachInside(source, [&inside](PdfObject inner) { inside += HasBlock(inner) ? 1U : 0U; });
        places.reserve(places.size() + inside);
        target = CopyBlock(source);
        ForEachInside(target, [&places](PdfObject& inner) {
            if (HasBlock(inner)) {
                places.push_back({&inner, inner});
                inner = MakeNull();
            }
        });
    };
    copyInto(root, object);
    OwnedObject owner(root);
    while (!places.empty()) {
        const Place place = places.back();
        places.pop_back();
        copyInto(*place.target, place.source);
    }
    return owner.Release();
}

}  // namespace zorvan
