// The document of the open file: its page list, and what is written of it when.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "api/status.h"
#include "pdf/page_tree.h"
#include "platform/seeded_hash.h"
#include "ps/page.h"
#include "ps/prolog.h"

namespace zorvan {

class Document : private PageReceiver {
public:
    /// Builds the page list, which registers the resources of every page. Failures of the page tree are
    /// recorded and end the list early.
    void BuildPageList();

    Status WriteHeaderAndProlog(const Prolog* prolog) const;
    /// Writes page `number`, counted from 1; writes nothing for a page that does not exist.
    Status WritePage(std::uint32_t number) const;

    [[nodiscard]] std::uint32_t PageCount() const { return static_cast<std::uint32_t>(pages_.size()); }

private:
    void AddPage(const PageAttributes& attributes) override;
    std::shared_ptr<ResourceScope> ScopeOf(const PageAttributes& attributes);

    std::vector<Page> pages_;
    Box boundingBox_{};
    /// Pages that name the same dictionary share one scope: documents with one Resources for all pages are
    /// common.
    std::unordered_map<std::uint64_t, std::shared_ptr<ResourceScope>, SeededHash> scopesByOwner_;
    std::shared_ptr<const OwnedObject> lastInherited_;
    std::shared_ptr<ResourceScope> lastInheritedScope_;
};

}  // namespace zorvan
