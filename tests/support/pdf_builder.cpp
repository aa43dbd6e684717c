// Writing objects and their offsets.
#include "support/pdf_builder.h"

#include <algorithm>
#include <cstdio>

namespace zorvan::test {

PdfBuilder& PdfBuilder::Object(unsigned number, std::string_view body, unsigned generation) {
    offsets_[{number, generation}] = text_.size();
    allOffsets_[{number, generation}] = text_.size();
    highest_ = std::max(highest_, number);
    sectionOpen_ = true;
    text_ += std::to_string(number) + " " + std::to_string(generation) + " obj\n";
    text_ += body;
    text_ += "\nendobj\n";
    return *this;
}

PdfBuilder& PdfBuilder::Stream(unsigned number, std::string_view data, std::string_view entries) {
    std::string body = "<< /Length " + std::to_string(data.size()) + " ";
    body += entries;
    body += " >>\nstream\n";
    body += data;
    body += "\nendstream";
    return Object(number, body);
}

PdfBuilder& PdfBuilder::Raw(std::string_view text) {
    text_ += text;
    return *this;
}

PdfBuilder& PdfBuilder::Section(std::string_view entries) {
    const std::size_t start = text_.size();
    text_ += "xref\n";
    for (const auto& [key, offset] : offsets_) {
        char entry[64];
        std::snprintf(entry, sizeof entry, "%u 1\n%010zu %05u n \n", key.first, offset, key.second);
        text_ += entry;
    }
    text_ += "trailer\n<< /Size " + std::to_string(highest_ + 1) + " ";
    text_ += entries;
    if (previousSection_ != 0) {
        text_ += " /Prev " + std::to_string(previousSection_);
    }
    text_ += " >>\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
    previousSection_ = start;
    offsets_.clear();
    sectionOpen_ = false;
    return *this;
}

std::string PdfBuilder::Bytes() {
    if (sectionOpen_) {
        Section();
    }
    return text_;
}

std::size_t PdfBuilder::OffsetOf(unsigned number, unsigned generation) const {
    return allOffsets_.at({number, generation});
}

PdfBuilder OnePage(std::string_view content, std::string_view pageEntries) {
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R >>");
    pdf.Object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>");
    pdf.Object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Contents 4 0 R " +
                      std::string(pageEntries) + " >>");
    pdf.Stream(4, content);
    return pdf;
}

}  // namespace zorvan::test
