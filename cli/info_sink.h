// Measures a conversion whose output is not wanted, for --info.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "cli/box.h"
#include "cli/font_finder.h"
#include "cli/page_box_finder.h"
#include "cli/page_sink.h"

namespace zorvan::cli {

struct PageInfo {
    unsigned page = 0;
    std::optional<Box> visibleBox;
};

class InfoSink final : public PageSink {
public:
    bool Take(const char* bytes, std::size_t count) override {
        bytes_ += count;
        if (isInPage_ && !finder_.Found()) {
            finder_.Take({bytes, count});
        }
        fonts_.Take({bytes, count});
        return true;
    }
    void BeginPage(unsigned page) override;
    void KeepPage() override;
    void DropPage() override;
    void ThrowIfFailed() const override {}

    // The library's output, without pages that were dropped.
    std::uint64_t OutputBytes() const { return bytes_; }
    const std::vector<PageInfo>& Pages() const { return pages_; }
    // Those of the document and of the pages that stayed.
    const std::vector<FontInfo>& Fonts() const { return fonts_.Fonts(); }

private:
    std::uint64_t bytes_ = 0;
    std::uint64_t pageStart_ = 0;
    unsigned page_ = 0;
    bool isInPage_ = false;
    PageBoxFinder finder_;
    FontFinder fonts_;
    std::vector<PageInfo> pages_;
};

}  // namespace zorvan::cli
