// Scanning contents for what they draw.
#include "content/drawn_names.h"

#include <algorithm>

#include "api/current_job.h"
#include "content/content_streams.h"
#include "pdf/lexer.h"
#include "pdf/name_table.h"
#include "ps/resource_registry.h"
#include "ps/resource_scope.h"

namespace zorvan {
namespace {

bool IsBlank(std::uint8_t byte) {
    return byte <= 0x20;
}

bool IsOperator(Bytes content, std::size_t place) {
    constexpr std::string_view kDo = "Do";
    const std::size_t end = place + kDo.size();
    return StandsAt(content, place, kDo) && place > 0 && IsBlank(content[place - 1]) &&
           (end == content.size() || !IsPdfRegular(content[end]));
}

/// The name that ends before a place; 0 when there is none.
std::uint32_t NameBefore(Bytes content, std::size_t place, NameTable& names) {
    while (place > 0 && IsBlank(content[place - 1])) {
        --place;
    }
    std::size_t begin = place;
    while (begin > 0 && IsPdfRegular(content[begin - 1])) {
        --begin;
    }
    if (begin == 0 || content[begin - 1] != '/') {
        return 0;
    }
    PdfObject token;
    std::uint32_t consumed = 0;
    ScanToken(content.subspan(begin - 1, place - begin + 1), names, token, consumed);
    return NameOf(token);
}

void MarkCategory(const ResourceScope& scope, ResourceCategory category) {
    for (const ScopeEntry& entry : scope.Entries(category)) {
        CurrentRegistry().MarkDrawn(category, entry.key);
    }
}

void MarkDrawnBy(const ResourceScope& scope, Bytes content) {
    std::vector<std::uint32_t> drawn;
    if (!FindDrawnNames(content, CurrentNames(), drawn)) {
        MarkCategory(scope, ResourceCategory::kXObject);
        return;
    }
    for (const std::uint32_t name : drawn) {
        if (const ScopeEntry* entry = scope.Find(ResourceCategory::kXObject, name)) {
            CurrentRegistry().MarkDrawn(ResourceCategory::kXObject, entry->key);
        }
    }
}

}  // namespace

bool FindDrawnNames(Bytes content, NameTable& names, std::vector<std::uint32_t>& drawn) {
    for (auto place = content.begin(); (place = std::find(place, content.end(), 'D')) != content.end();
         ++place) {
        const auto index = static_cast<std::size_t>(place - content.begin());
        if (!IsOperator(content, index)) {
            continue;
        }
        const std::uint32_t name = NameBefore(content, index, names);
        if (name == 0) {
            return false;
        }
        drawn.push_back(name);
    }
    return true;
}

void MarkDrawnIn(const ResourceScope* scope, PdfObject contents) {
    if (scope == nullptr) {
        return;
    }
    const auto inForce = CurrentRegistry().PutInForce(scope);
    MarkCategory(*scope, ResourceCategory::kFont);
    MarkCategory(*scope, ResourceCategory::kPattern);
    if (scope->Entries(ResourceCategory::kXObject).empty()) {
        return;
    }
    static_cast<void>(ForEachContentStream(contents, [scope](PdfObject reference, PdfObject stream) {
        DecodedContent content;
        static_cast<void>(content.Decode(stream, reference));  // its errors are told when it is run
        MarkDrawnBy(*scope, content.Data());
        return Status::kOk;
    }));
}

}  // namespace zorvan
