// Registration, promotion and the order of emission.
#include "ps/resource_registry.h"

#include "api/current_job.h"
#include "api/error_record.h"
#include "platform/limits.h"
#include "ps/resource_scope.h"

namespace zorvan {
namespace {

PdfObject ReferenceOf(ResourceKey key) {
    return MakeReference(key.number, key.generation);
}

std::uint64_t HashKey(ResourceKey key) {
    return ReferenceKey(key.number, key.generation);
}

const CategoryRow& RowOf(ResourceCategory category) {
    return kCategoryRows[ListOf(category)];
}

/// True for what has a content: often its Resources are those of its page, itself among them. Whether it uses
/// itself its content tells, and is told where it does.
bool MayNameItself(ResourceCategory category) {
    return category == ResourceCategory::kXObject || category == ResourceCategory::kPattern ||
           category == ResourceCategory::kFont;
}

/// Raises a counter for the length of a block.
class Deeper {
public:
    explicit Deeper(std::uint32_t& depth) : depth_(depth) { ++depth_; }
    ~Deeper() { --depth_; }
    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;

private:
    std::uint32_t& depth_;
};

}  // namespace

ResourceRegistry::Entry* ResourceRegistry::Find(ResourceCategory category, ResourceKey key) const {
    const List& list = lists_[ListOf(category)];
    const auto found = list.byKey.find(HashKey(key));
    return found == list.byKey.end() ? nullptr : found->second;
}

ResourceRegistry::Entry& ResourceRegistry::Append(ResourceCategory category, ResourceKey key) {
    List& list = lists_[ListOf(category)];
    auto entry = std::make_unique<Entry>();
    entry->key = key;
    entry->firstPage = currentPage_;
    if (list.entries.size() == list.entries.capacity()) {
        // Before the key is entered, which must not be left alone.
        list.entries.reserve(list.entries.size() * 2 + 1);
    }
    list.byKey.emplace(HashKey(key), entry.get());
    list.entries.push_back(std::move(entry));
    return *list.entries.back();
}

Status ResourceRegistry::Register(ResourceCategory category, const ResourceRequest& request) {
    if (!Builds(category)) {
        return Status::kOk;
    }
    const CategoryRow& row = RowOf(category);
    Entry* known = Find(category, request.key);
    if (known != nullptr && known->building && MayNameItself(category)) {
        return Status::kOk;
    }
    if ((known != nullptr && known->building) || nesting_ >= limits::kContentNesting) {
        return Fail(row.error, ReferenceOf(request.key));
    }
    const Deeper deeper(nesting_);
    return known == nullptr ? Build(Append(category, request.key), row, request) : RegisterAgain(*known, row);
}

Status ResourceRegistry::Build(Entry& entry, const CategoryRow& row, const ResourceRequest& request) {
    const ScopedValue building(entry.building, true);
    entry.global = row.promotion == Promotion::kAtOnce;
    entry.resource = factories_[ListOf(row.category)](request);
    if (entry.resource == nullptr) {
        return Fail(row.error, ReferenceOf(request.key));
    }
    return entry.resource->RegisterUsed();
}

Status ResourceRegistry::RegisterAgain(Entry& entry, const CategoryRow& row) {
    if (entry.resource == nullptr) {
        return row.error;  // recorded when it was met first
    }
    if (entry.firstPage == currentPage_) {
        return Status::kOk;
    }
    ++entry.pageCount;
    if (entry.pageCount > 2) {
        return Status::kOk;  // promoted already, and so is all that it uses
    }
    entry.global =
        entry.global || row.promotion == Promotion::kOnSecondPage ||
        (row.promotion == Promotion::kOnSecondPageUnlessPageLocal && !entry.resource->IsPageLocal());
    const ScopedValue building(entry.building, true);
    return entry.resource->RegisterUsed();
}

Resource* ResourceRegistry::GetObject(ResourceCategory category, ResourceKey key) const {
    const Entry* entry = Find(category, key);
    return entry == nullptr ? nullptr : entry->resource.get();
}

bool ResourceRegistry::IsGlobal(ResourceCategory category, ResourceKey key) const {
    const Entry* entry = Find(category, key);
    return entry != nullptr && entry->global;
}

bool ResourceRegistry::IsEmitted(ResourceCategory category, const Entry& entry) const {
    switch (category) {
        case ResourceCategory::kXObject:
        case ResourceCategory::kPattern:
            return entry.emittedIn == serial_;
        case ResourceCategory::kFont:
            return entry.global ? entry.emittedIn != 0 : entry.emittedIn == serial_;
        case ResourceCategory::kShading:
        case ResourceCategory::kEncoding:
        case ResourceCategory::kCMap:
            // Written by whatever names them: what a page wrote is gone with it, what the setup wrote stays.
            return entry.emittedIn == kSetupSerial || entry.emittedIn == serial_;
        default:
            return entry.emittedIn != 0;
    }
}

Status ResourceRegistry::Emit(ResourceCategory category, Entry& entry) {
    if (entry.resource == nullptr) {
        return Status::kOk;
    }
    if (entry.writing && MayNameItself(category)) {
        return Status::kOk;
    }
    if (entry.writing || nesting_ >= limits::kContentNesting) {
        RecordError(RowOf(category).error, ReferenceOf(entry.key));
        return Status::kOk;  // the inner one is skipped, and its page stays
    }
    const Deeper deeper(nesting_);
    const ScopedValue writing(entry.writing, true);
    RETURN_IF_FAILED(entry.resource->WriteResource());
    entry.emittedIn = serial_;
    return Status::kOk;
}

void ResourceRegistry::MarkDrawn(ResourceCategory category, ResourceKey key) {
    Entry* entry = Find(category, key);
    if (entry == nullptr || entry->resource == nullptr || entry->drawnIn == serial_ ||
        nesting_ >= limits::kContentNesting) {
        return;
    }
    const Deeper deeper(nesting_);
    entry->drawnIn = serial_;
    entry->resource->MarkDrawn();
}

void ResourceRegistry::MarkUnusable(ResourceCategory category, ResourceKey key) {
    if (Entry* entry = Find(category, key)) {
        entry->unusable = true;
    }
}

bool ResourceRegistry::IsBeingWritten(ResourceCategory category, ResourceKey key) const {
    const Entry* entry = Find(category, key);
    return entry != nullptr && entry->writing;
}

Status ResourceRegistry::EmitAndMark(ResourceCategory category, ResourceKey key) {
    Entry* entry = Find(category, key);
    return entry == nullptr ? Status::kOk : Emit(category, *entry);
}

Status ResourceRegistry::EmitIfNeeded(ResourceCategory category, ResourceKey key) {
    Entry* entry = Find(category, key);
    return entry == nullptr || IsEmitted(category, *entry) ? Status::kOk : Emit(category, *entry);
}

Status ResourceRegistry::EmitGlobal() {
    for (const ResourceCategory category :
         {ResourceCategory::kFont, ResourceCategory::kColorSpace, ResourceCategory::kExtGState,
          ResourceCategory::kFunction, ResourceCategory::kHalftone}) {
        // By index: writing one may register, and so append, another.
        const auto& entries = lists_[ListOf(category)].entries;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (entries[i]->global && !IsEmitted(category, *entries[i])) {
                RETURN_IF_FAILED(Emit(category, *entries[i]));
            }
        }
    }
    return Status::kOk;
}

Status ResourceRegistry::EmitDirect(const ResourceScope& scope, ResourceCategory category) {
    for (const ScopeEntry& each : scope.Entries(category)) {
        if (each.direct && !IsGlobal(category, each.key)) {
            RETURN_IF_FAILED(EmitAndMark(category, each.key));
        }
    }
    return Status::kOk;
}

Status ResourceRegistry::EmitNamed(const ResourceScope& scope, ResourceCategory category) {
    for (const ScopeEntry& each : scope.Entries(category)) {
        if (!IsGlobal(category, each.key)) {
            RETURN_IF_FAILED(EmitIfNeeded(category, each.key));
        }
    }
    return Status::kOk;
}

Status ResourceRegistry::EmitPageLevel(const ResourceScope& scope) {
    const auto inForce = PutInForce(&scope);
    RETURN_IF_FAILED(EmitDirect(scope, ResourceCategory::kColorSpace));
    RETURN_IF_FAILED(EmitDirect(scope, ResourceCategory::kExtGState));
    RETURN_IF_FAILED(EmitNamed(scope, ResourceCategory::kColorSpace));
    RETURN_IF_FAILED(EmitNamed(scope, ResourceCategory::kExtGState));
    // What shadings name: in the content, a q around the first use would take it back.
    RETURN_IF_FAILED(EmitNamed(scope, ResourceCategory::kShading));
    RETURN_IF_FAILED(EmitNamed(scope, ResourceCategory::kXObject));
    RETURN_IF_FAILED(EmitNamed(scope, ResourceCategory::kFont));
    return EmitNamed(scope, ResourceCategory::kPattern);
}

Status ResourceRegistry::EmitScope(const ResourceScope& scope) {
    const auto inForce = PutInForce(&scope);
    for (const ResourceCategory category :
         {ResourceCategory::kColorSpace, ResourceCategory::kExtGState, ResourceCategory::kShading,
          ResourceCategory::kXObject, ResourceCategory::kFont, ResourceCategory::kPattern}) {
        RETURN_IF_FAILED(EmitNamed(scope, category));
    }
    return Status::kOk;
}

Status ResourceRegistry::InstantiatePatterns(const ResourceScope& scope) {
    for (const ScopeEntry& each : scope.Entries(ResourceCategory::kPattern)) {
        const Entry* entry = Find(ResourceCategory::kPattern, each.key);
        if (entry == nullptr || entry->resource == nullptr || entry->unusable) {
            return Fail(Status::kUnregisteredResources, ReferenceOf(each.key));
        }
        OutputPiece line;
        AppendResourceName(line, each.key);
        line.Append(" ");
        AppendResourceName(line, each.key);
        line.Append(" /PatternPrototype findRes makePat\n");
        RETURN_IF_FAILED(line.Write());
    }
    return Status::kOk;
}

}  // namespace zorvan
