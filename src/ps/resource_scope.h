// The names of one Resources dictionary, and what they stand for in the registry.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "pdf/object.h"
#include "ps/resource.h"

namespace zorvan {

struct ScopeEntry {
    std::uint32_t name = 0;
    ResourceKey key;
    bool direct = false;      // the dictionary held the object itself: its key is a generated number
    bool registrable = true;  // false for a value that can be no resource, a number for instance
};

class ResourceScope {
public:
    /// Takes the names of the categories that the registry builds. `resources` is a dictionary and is not
    /// kept.
    explicit ResourceScope(PdfObject resources);

    /// The scope of a dictionary's `Resources` entry; null when it has none.
    static std::unique_ptr<ResourceScope> OfDictionary(PdfObject dictionary);

    /// Registers every resource of the scope for the registry's current page. What cannot be built is
    /// recorded and left out. From the third page on nothing changes any more, and nothing is done.
    void Register();

    /// Registers and counts nothing: the entry of a name, or null.
    [[nodiscard]] const ScopeEntry* Find(ResourceCategory category, std::uint32_t name) const;
    /// The entries of a category in the order of the dictionary.
    [[nodiscard]] std::span<const ScopeEntry> Entries(ResourceCategory category) const;

private:
    void TakeCategory(PdfObject dictionary);

    std::vector<ScopeEntry> entries_;
    std::array<std::uint32_t, kCategoryCount + 1> firstOfList_{};
    std::vector<std::uint32_t> byName_;      // places in entries_, sorted by list and name
    std::vector<OwnedObject> directValues_;  // of the direct entries, in their order
    std::uint32_t registrations_ = 0;
};

}  // namespace zorvan
