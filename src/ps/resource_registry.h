// Every resource that the pages of the open file use: each is built once, counted, and written once where it
// belongs.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "platform/scoped_value.h"
#include "platform/seeded_hash.h"
#include "ps/resource.h"

namespace zorvan {

class ResourceScope;

class ResourceRegistry {
public:
    explicit ResourceRegistry(const ResourceFactories& factories) : factories_(factories) {}

    /// Pages are numbered from 1 while the page list is built; registrations count by page.
    void SetCurrentPage(std::uint32_t number) { currentPage_ = number; }

    /// False for a category that the library does not build (yet): its resources are nowhere missed.
    [[nodiscard]] bool Builds(ResourceCategory category) const {
        return factories_[ListOf(category)] != nullptr;
    }

    /// Registers a resource for the current page: builds it when it is new, else counts and promotes it. The
    /// category's error, recorded, when the object is no such resource, when it is being built right now (it
    /// contains itself), or beyond the nesting limit; the resource is then absent.
    Status Register(ResourceCategory category, const ResourceRequest& request);

    /// Builds a resource that is not registered: it belongs to the caller alone, as part of whose text it is
    /// written. Null when the object is none.
    template <class Use>
    [[nodiscard]] std::unique_ptr<Use> BuildAlone(ResourceCategory category,
                                                  const ResourceRequest& request) const {
        const ResourceFactory factory = factories_[ListOf(category)];
        std::unique_ptr<Resource> resource = factory == nullptr ? nullptr : factory(request);
        return std::unique_ptr<Use>(static_cast<Use*>(resource.release()));
    }

    /// Null for an entry that is absent.
    [[nodiscard]] Resource* GetObject(ResourceCategory category, ResourceKey key) const;
    [[nodiscard]] bool IsGlobal(ResourceCategory category, ResourceKey key) const;

    /// Tells an entry, once a page, that it is drawn on the page that is written next.
    void MarkDrawn(ResourceCategory category, ResourceKey key);
    /// The page that is written next, or is being written: a number that no other output of a page has.
    [[nodiscard]] std::uint32_t PageSerial() const { return serial_; }

    /// True inside the resource itself.
    [[nodiscard]] bool IsBeingWritten(ResourceCategory category, ResourceKey key) const;
    /// From here on no page can have the resource, which has turned out to contain itself.
    void MarkUnusable(ResourceCategory category, ResourceKey key);

    /// Writes the definition and marks it as written. Nothing for an absent entry.
    Status EmitAndMark(ResourceCategory category, ResourceKey key);
    /// The same, unless it is written already: what a resource calls for the ones that it names.
    Status EmitIfNeeded(ResourceCategory category, ResourceKey key);

    /// Writes the global resources that are not written yet: fonts, colour spaces, graphics states,
    /// functions, halftones.
    Status EmitGlobal();
    /// From here on what vanished with the page before counts as neither drawn nor written.
    void BeginPage() { ++serial_; }
    /// Writes what the page's own setup must define.
    Status EmitPageLevel(const ResourceScope& scope);
    /// Writes what a resource names in a Resources dictionary of its own, as far as it is not written yet.
    Status EmitScope(const ResourceScope& scope);
    /// The scope whose resources are being written, the innermost one: what a resource without any of its own
    /// uses. Null outside of pages.
    [[nodiscard]] const ResourceScope* ScopeInForce() const { return scopeInForce_; }
    /// Puts a scope in force as long as the result lives.
    [[nodiscard]] ScopedValue<const ResourceScope*> PutInForce(const ResourceScope* scope) {
        return {scopeInForce_, scope};
    }
    /// Makes the page's patterns, after its clip. kUnregisteredResources, recorded, for a name of the scope
    /// whose pattern is absent or unusable.
    Status InstantiatePatterns(const ResourceScope& scope);

private:
    struct Entry {
        ResourceKey key;
        std::unique_ptr<Resource> resource;  // null when the object is no usable resource
        bool global = false;
        bool building = false;
        bool unusable = false;
        bool writing = false;
        std::uint32_t pageCount = 1;
        std::uint32_t firstPage = 0;
        std::uint32_t drawnIn = 0;    // the serial of the page that it was last drawn on
        std::uint32_t emittedIn = 0;  // the serial of the page output that wrote it, 0 when it is not written
    };
    struct List {
        std::vector<std::unique_ptr<Entry>> entries;
        std::unordered_map<std::uint64_t, Entry*, SeededHash> byKey;
    };

    [[nodiscard]] Entry* Find(ResourceCategory category, ResourceKey key) const;
    Entry& Append(ResourceCategory category, ResourceKey key);
    Status Build(Entry& entry, const CategoryRow& row, const ResourceRequest& request);
    Status RegisterAgain(Entry& entry, const CategoryRow& row);
    [[nodiscard]] bool IsEmitted(ResourceCategory category, const Entry& entry) const;
    Status Emit(ResourceCategory category, Entry& entry);
    Status EmitDirect(const ResourceScope& scope, ResourceCategory category);
    Status EmitNamed(const ResourceScope& scope, ResourceCategory category);

    const ResourceFactories& factories_;
    std::array<List, kCategoryCount> lists_;
    std::uint32_t currentPage_ = 0;
    std::uint32_t nesting_ = 0;
    const ResourceScope* scopeInForce_ = nullptr;
    /// Raised for each page that is written. What vanishes with a page's memory counts as written only under
    /// the serial of its own page, which resets all of it without walking the lists.
    static constexpr std::uint32_t kSetupSerial = 1;
    std::uint32_t serial_ = kSetupSerial;
};

}  // namespace zorvan
