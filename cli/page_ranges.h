// The pages that --pages asks for: "1-3,7,9-", sorted and united.
#pragma once

#include <string_view>
#include <vector>

namespace zorvan::cli {

class PageRanges {
public:
    // Every page of the document.
    PageRanges() = default;
    // Page numbers count from 1; "9-" runs to the last page. Throws a usage Failure for any other text.
    explicit PageRanges(std::string_view text);

    // The page numbers, rising, each once: a page that is written twice in one job lacks what is written only
    // once for the file. Throws a usage Failure when a page is outside the document of `pageCount` pages.
    std::vector<unsigned> Resolve(unsigned pageCount) const;

private:
    struct Range {
        unsigned first;
        unsigned last;
    };
    // Stands for the document's last page, whatever its number.
    static constexpr unsigned kLastPage = 0;

    static Range ParseRange(std::string_view text);

    // None stands for the whole document, which may have no pages.
    std::vector<Range> ranges_;
};

}  // namespace zorvan::cli
