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

bool IsOperator(Bytes content, std::size_t place) {
    constexpr std::string_view kDo = "Do";
    const std::size_t end = place + kDo.size();
    return StandsAt(content, place, kDo) && (place == 0 || !IsPdfRegular(content[place - 1])) &&
           (end == content.size() || !IsPdfRegular(content[end]));
}

/// Looks for comments, once through the content.
class CommentFinder {
public:
    explicit CommentFinder(Bytes content) : content_(content) {}

    /// True when a comment may reach up to a place, which lies behind those asked for before.
    bool ReachesUpTo(std::size_t place) {
        for (; seen_ < place; ++seen_) {
            const std::uint8_t byte = content_[seen_];
            inComment_ = byte == '%' || (inComment_ && byte != '\n' && byte != '\r');
        }
        return inComment_;
    }

private:
    Bytes content_;
    std::size_t seen_ = 0;
    bool inComment_ = false;
};

/// The name that ends before a place; 0 when there is none for certain.
std::uint32_t NameBefore(Bytes content, std::size_t place, CommentFinder& comments, NameTable& names) {
    constexpr std::size_t kLongest = 512;  // with all its escapes
    while (place > 0 && content[place - 1] <= 0x20) {
        --place;
    }
    std::size_t begin = place;
    while (begin > 0 && IsPdfRegular(content[begin - 1]) && place - begin < kLongest) {
        --begin;
    }
    if (begin == 0 || content[begin - 1] != '/' || comments.ReachesUpTo(begin - 1)) {
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

}  // namespace

bool FindDrawnNames(Bytes content, NameTable& names, std::vector<std::uint32_t>& drawn) {
    CommentFinder comments(content);
    for (auto place = content.begin(); (place = std::find(place, content.end(), 'D')) != content.end();
         ++place) {
        const auto index = static_cast<std::size_t>(place - content.begin());
        if (!IsOperator(content, index)) {
            continue;
        }
        const std::uint32_t name = NameBefore(content, index, comments, names);
        if (name == 0) {
            return false;
        }
        drawn.push_back(name);
    }
    return true;
}

void MarkFontsAndPatterns(const ResourceScope* scope) {
    if (scope != nullptr) {
        const auto inForce = CurrentRegistry().PutInForce(scope);
        MarkCategory(*scope, ResourceCategory::kFont);
        MarkCategory(*scope, ResourceCategory::kPattern);
    }
}

void MarkXObjects(const ResourceScope* scope, PdfObject contents) {
    if (scope == nullptr || scope->Entries(ResourceCategory::kXObject).empty()) {
        return;
    }
    std::vector<std::uint32_t> drawn;
    bool found = true;
    // The data is gone again before anything else is looked into.
    static_cast<void>(ForEachContentStream(contents, [&](PdfObject /*reference*/, PdfObject stream) {
        DecodedContent content;
        const bool whole = !Failed(content.DecodeUnrecorded(stream));  // errors are told when it is run
        found = whole && FindDrawnNames(content.Data(), CurrentNames(), drawn) && found;
        return Status::kOk;
    }));
    const auto inForce = CurrentRegistry().PutInForce(scope);
    if (!found) {
        MarkCategory(*scope, ResourceCategory::kXObject);
        return;
    }
    for (const std::uint32_t name : drawn) {
        if (const ScopeEntry* entry = scope->Find(ResourceCategory::kXObject, name)) {
            CurrentRegistry().MarkDrawn(ResourceCategory::kXObject, entry->key);
        }
    }
}

void MarkDrawnIn(const ResourceScope* scope, PdfObject contents) {
    MarkFontsAndPatterns(scope);
    MarkXObjects(scope, contents);
}

}  // namespace zorvan
