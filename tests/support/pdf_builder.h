// Composes PDF files for tests, with a cross-reference table that is right to the byte.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace zorvan::test {

class PdfBuilder {
public:
    explicit PdfBuilder(std::string_view header = "%PDF-1.4") : text_(std::string(header) + "\n") {}

    /// Adds "number generation obj body endobj".
    PdfBuilder& Object(unsigned number, std::string_view body, unsigned generation = 0);
    /// Adds a stream object; `Length` is the data's own and `entries` are the rest of its dictionary.
    PdfBuilder& Stream(unsigned number, std::string_view data, std::string_view entries = "");
    /// Adds text as it stands.
    PdfBuilder& Raw(std::string_view text);

    /// Adds a section with the objects added since the last one, and its trailer. `entries` are the trailer's
    /// besides `Size` and `Prev`.
    PdfBuilder& Section(std::string_view entries = "/Root 1 0 R");

    /// The bytes so far; with a section added first when objects stand behind the last one.
    std::string Bytes();

    [[nodiscard]] std::size_t OffsetOf(unsigned number, unsigned generation = 0) const;

private:
    std::string text_;
    std::map<std::pair<unsigned, unsigned>, std::size_t> offsets_;  // of the section being built
    std::map<std::pair<unsigned, unsigned>, std::size_t> allOffsets_;
    std::size_t previousSection_ = 0;
    unsigned highest_ = 0;
    bool sectionOpen_ = true;
};

/// A document of one page of 612 by 792 with this content (object 4). Objects from 10 on are the test's.
PdfBuilder OnePage(std::string_view content, std::string_view pageEntries = "");

}  // namespace zorvan::test
