// Parses page ranges and applies them to a document.
#include "cli/page_ranges.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <string>

#include "cli/failure.h"

namespace zorvan::cli {
namespace {

[[noreturn]] void RejectRange(std::string_view text) {
    throw Failure(ExitCode::kUsage,
                  "--pages: '" + std::string(text) + "' is no page range: give numbers such as 1-3,7,9-");
}

unsigned ParsePage(std::string_view text, std::string_view range) {
    unsigned page = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), page);
    if (error != std::errc() || end != text.data() + text.size() || page == 0) {
        RejectRange(range);
    }
    return page;
}

}  // namespace

PageRanges::PageRanges(std::string_view text) {
    for (;;) {
        const std::size_t comma = text.find(',');
        ranges_.push_back(ParseRange(text.substr(0, comma)));
        if (comma == std::string_view::npos) {
            return;
        }
        text.remove_prefix(comma + 1);
    }
}

PageRanges::Range PageRanges::ParseRange(std::string_view text) {
    const std::size_t dash = text.find('-');
    const unsigned first = ParsePage(text.substr(0, dash), text);
    if (dash == std::string_view::npos) {
        return {first, first};
    }
    if (dash + 1 == text.size()) {
        return {first, kLastPage};
    }
    const unsigned last = ParsePage(text.substr(dash + 1), text);
    if (last < first) {
        RejectRange(text);
    }
    return {first, last};
}

std::vector<unsigned> PageRanges::Resolve(unsigned pageCount) const {
    std::vector<unsigned> pages;
    if (ranges_.empty()) {
        pages.resize(pageCount);
        std::iota(pages.begin(), pages.end(), 1U);
    }
    for (const Range& range : ranges_) {
        const unsigned last = range.last == kLastPage ? pageCount : range.last;
        const unsigned outside = std::max(range.first, last);
        if (outside > pageCount) {
            throw Failure(ExitCode::kUsage, "--pages: page " + std::to_string(outside) +
                                                " is outside the document, which has " +
                                                std::to_string(pageCount) + " page(s)");
        }
        for (unsigned page = range.first; page <= last; ++page) {
            pages.push_back(page);
        }
    }
    std::sort(pages.begin(), pages.end());
    pages.erase(std::unique(pages.begin(), pages.end()), pages.end());
    return pages;
}

}  // namespace zorvan::cli
