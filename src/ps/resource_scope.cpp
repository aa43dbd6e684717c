// Building a scope from a Resources dictionary.
#include "ps/resource_scope.h"

#include <algorithm>

#include "api/current_job.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/pdf_file.h"
#include "ps/resource_registry.h"

namespace zorvan {
namespace {

bool CanBeResource(PdfObject value) {
    return IsReference(value) || HasBlock(value) || Is(value, ObjectType::kName);
}

}  // namespace

ResourceScope::ResourceScope(PdfObject resources) {
    for (std::size_t list = 0; list < kCategoryCount; ++list) {
        firstOfList_[list] = static_cast<std::uint32_t>(entries_.size());
        const CategoryRow& row = kCategoryRows[list];
        if (row.key != 0 && CurrentRegistry().Builds(row.category)) {
            TakeCategory(Resolved(DictGet(resources, row.key)).Get());
        }
    }
    firstOfList_.back() = static_cast<std::uint32_t>(entries_.size());
}

std::unique_ptr<ResourceScope> ResourceScope::OfDictionary(PdfObject dictionary) {
    const Resolved resources(DictGet(dictionary, names::kResources));
    return Is(resources.Get(), ObjectType::kDictionary) ? std::make_unique<ResourceScope>(resources.Get())
                                                        : nullptr;
}

void ResourceScope::TakeCategory(PdfObject dictionary) {
    // About the bytes that it takes up: forms without number may share one dictionary of many names.
    constexpr std::uint64_t kEntrySteps = 64;
    CurrentPdfFile()->Charge(kEntrySteps * DictSlotCount(dictionary));
    const auto first = static_cast<std::ptrdiff_t>(entries_.size());
    for (std::uint32_t i = 0; i < DictSlotCount(dictionary); ++i) {
        const DictionarySlot slot = DictSlot(dictionary, i);
        if (slot.key == 0 || IsNull(slot.value)) {
            continue;
        }
        ScopeEntry entry{.name = slot.key, .key = {slot.value.payload, slot.value.type}};
        entry.direct = !IsReference(slot.value);
        entry.registrable = CanBeResource(slot.value);
        if (entry.direct) {
            entry.key = {};
            directValues_.emplace_back(CloneObject(slot.value));
        }
        byName_.push_back(static_cast<std::uint32_t>(entries_.size()));
        entries_.push_back(entry);
    }
    std::stable_sort(byName_.begin() + first, byName_.end(), [this](std::uint32_t a, std::uint32_t b) {
        return entries_[a].name < entries_[b].name;
    });
}

void ResourceScope::Register() {
    if (registrations_ == 2) {
        return;
    }
    ++registrations_;
    auto direct = directValues_.begin();
    for (std::size_t list = 0; list < kCategoryCount; ++list) {
        for (std::uint32_t place = firstOfList_[list]; place < firstOfList_[list + 1]; ++place) {
            ScopeEntry& entry = entries_[place];
            PdfObject value = MakeReference(entry.key.number, entry.key.generation);
            if (entry.direct) {
                value = (direct++)->Get();
            }
            if (!entry.registrable) {
                continue;
            }
            if (entry.direct && entry.key.number == 0) {
                entry.key.number = TakeGeneratedResourceNumber();
            }
            const ResourceRequest request{.key = entry.key, .value = value};
            // Recorded by the registry; the page and the ones after it stay.
            static_cast<void>(CurrentRegistry().Register(kCategoryRows[list].category, request));
        }
    }
}

const ScopeEntry* ResourceScope::Find(ResourceCategory category, std::uint32_t name) const {
    const std::size_t list = ListOf(category);
    const auto* const first = byName_.data() + firstOfList_[list];
    const auto* const last = byName_.data() + firstOfList_[list + 1];
    const auto* const found = std::lower_bound(
        first, last, name,
        [this](std::uint32_t place, std::uint32_t wanted) { return entries_[place].name < wanted; });
    return found == last || entries_[*found].name != name ? nullptr : &entries_[*found];
}

std::span<const ScopeEntry> ResourceScope::Entries(ResourceCategory category) const {
    const std::size_t list = ListOf(category);
    return std::span(entries_).subspan(firstOfList_[list], firstOfList_[list + 1] - firstOfList_[list]);
}

}  // namespace zorvan
