// Puts a converted document into its output file, with the page size requests where they are wanted.
#pragma once

#include <cstdint>

#include "cli/output_file.h"
#include "cli/page_box_finder.h"
#include "cli/page_buffer.h"
#include "cli/page_sink.h"

namespace zorvan::cli {

class DocumentSink final : public PageSink {
public:
    struct Settings {
        bool askForPageSize = true;  // --page-size=auto
        bool mayDropPages = false;   // --keep-going
    };

    DocumentSink(OutputFile& output, const Settings& settings);

    bool Take(const char* bytes, std::size_t count) override {
        return isThrough_ ? output_.Write(bytes, count) : Hold(bytes, count);
    }
    void BeginPage(unsigned page) override;
    void KeepPage() override;
    void DropPage() override;
    void ThrowIfFailed() const override;

private:
    bool Hold(const char* bytes, std::size_t count);
    bool Release();
    bool CopyHeld(std::uint64_t begin, std::uint64_t end);

    OutputFile& output_;
    Settings settings_;
    // What cannot be taken back from the output is held until the page's status is known.
    bool holdsWholePages_;
    // Whether pieces go to the output as they come: always but at the beginning of a page that is held.
    bool isThrough_ = true;
    std::uint64_t pageStart_ = 0;
    PageBuffer held_;
    PageBoxFinder finder_;
};

}  // namespace zorvan::cli
