// Jobs and files through the exported functions, step by step, and the parts of what they write.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/host.h"
#include "support/pdf_builder.h"
#include "zorvan/zorvan.h"

namespace zorvan::test {

/// A job that ends with the object.
class Job {
public:
    explicit Job(const std::string& folder = FilterFolder()) : status_(KAPRINE_Begin(folder.c_str())) {}
    ~Job() { KAPRINE_End(); }
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    [[nodiscard]] int Status() const { return status_; }

private:
    int status_;
};

/// Opens a file in the running job; ZORVAN_OneFileEnd is the test's.
inline int OpenFile(std::string_view bytes, ZORVAN_WriteCallback callback = Pieces::Take) {
    return ZORVAN_OneFileBegin(TemporaryFile(bytes).Path().c_str(), callback, nullptr);
}

/// The statuses of one file's calls, and what they wrote.
struct FileRun {
    int begin = 0;
    int global = 0;
    std::vector<int> pages;
    std::string output;
};

/// Converts all pages of a file in the running job.
inline FileRun RunFile(std::string_view bytes) {
    Pieces::Reset();
    FileRun run;
    run.begin = OpenFile(bytes);
    run.global = ZORVAN_OutputGlobalResources();
    for (int page = 1; page <= ZORVAN_GetTotalPages(); ++page) {
        run.pages.push_back(ZORVAN_OutputOnePage(static_cast<unsigned>(page)));
    }
    ZORVAN_OneFileEnd();
    run.output = Pieces::Joined();
    return run;
}

/// A document whose pages have these dictionary entries besides `Type`, `Parent` and `MediaBox`. The pages
/// are the objects from 100 on; the catalog is 1 and the root of the page tree 2.
inline PdfBuilder Pages(const std::vector<std::string>& pages, std::string_view catalogEntries = "") {
    std::string kids;
    for (std::size_t page = 0; page < pages.size(); ++page) {
        kids += std::to_string(100 + page) + " 0 R ";
    }
    PdfBuilder pdf;
    pdf.Object(1, "<< /Type /Catalog /Pages 2 0 R " + std::string(catalogEntries) + " >>");
    pdf.Object(2, "<< /Type /Pages /Kids [ " + kids + "] /Count " + std::to_string(pages.size()) +
                      " /MediaBox [0 0 612 792] >>");
    for (std::size_t page = 0; page < pages.size(); ++page) {
        pdf.Object(static_cast<unsigned>(100 + page), "<< /Type /Page /Parent 2 0 R " + pages[page] + " >>");
    }
    return pdf;
}

/// The text between two others, the first one searched for from `start`.
inline std::string Between(std::string_view text, std::string_view before, std::string_view after,
                           std::size_t start = 0) {
    const std::size_t found = text.find(before, start);
    if (found == std::string_view::npos) {
        return "(not found)";
    }
    const std::size_t begin = found + before.size();
    return std::string(text.substr(begin, text.find(after, begin) - begin));
}

/// What the document's setup defines.
inline std::string SetupOf(std::string_view output) {
    return Between(output, "PDFVars/DocInitAll get exec PDFVars/InitAll get exec\n", "PDFVars/TermAll");
}

/// What a page's setup defines.
inline std::string PageSetupOf(std::string_view output, unsigned page = 1) {
    const std::string number = std::to_string(page);
    return Between(output, "PDFVars/InitAll get exec\n", "%%EndPageSetup\n",
                   output.find("\n%%Page: " + number + " " + number + "\n"));
}

/// The first line of the page's frame to the last, without the blank line before it.
inline std::string FrameOf(std::string_view output, unsigned page = 1) {
    const std::string number = std::to_string(page);
    const std::string first = "%%Page: " + number + " " + number + "\n";
    return first + Between(output, "\n" + first, "%%EndPage\n") + "%%EndPage\n";
}

}  // namespace zorvan::test
