// Objects: 1 the catalog, 2 the page tree, then a page and its content for each page.
#include "tests/cli/sample_pdf.h"

#include <cstdio>

namespace zorvan::cli {
namespace {

std::string Reference(std::size_t number) {
    return std::to_string(number) + " 0 R";
}

std::string PageObject(const SamplePage& page, std::size_t content) {
    return "<< /Type /Page /Parent 2 0 R /MediaBox [" + page.mediaBox + "] /Rotate " +
           std::to_string(page.rotate) + " /Resources << " + page.resources + " >> /Contents " +
           Reference(content) + " >>";
}

std::string ContentObject(const SamplePage& page) {
    return "<< /Length " + std::to_string(page.content.size() + page.lengthSurplus) + " >>\nstream\n" +
           page.content + "endstream";
}

std::vector<std::string> Objects(const std::vector<SamplePage>& pages) {
    std::vector<std::string> objects = {"<< /Type /Catalog /Pages 2 0 R >>", ""};
    std::string kids;
    for (const SamplePage& page : pages) {
        kids += Reference(objects.size() + 1) + " ";
        objects.push_back(PageObject(page, objects.size() + 2));
        objects.push_back(ContentObject(page));
    }
    objects[1] = "<< /Type /Pages /Count " + std::to_string(pages.size()) + " /Kids [" + kids + "] >>";
    return objects;
}

// Entries of a cross-reference section are 20 bytes each (PDF Reference 1.7, 7.5.4).
std::string CrossReferenceEntry(std::size_t offset) {
    char entry[32];
    std::snprintf(entry, sizeof entry, "%010zu 00000 n \n", offset);
    return entry;
}

}  // namespace

SamplePage BrokenPage() {
    SamplePage page;
    page.content = "1 m\n";
    return page;
}

SamplePage OverlongPage() {
    SamplePage page;
    page.lengthSurplus = 100000;
    return page;
}

std::string SamplePdf(const std::vector<SamplePage>& pages) {
    std::string pdf = "%PDF-1.4\n";
    std::string table = "0000000000 65535 f \n";
    const std::vector<std::string> objects = Objects(pages);
    for (std::size_t i = 0; i < objects.size(); ++i) {
        table += CrossReferenceEntry(pdf.size());
        pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::string size = std::to_string(objects.size() + 1);
    const std::string start = std::to_string(pdf.size());
    return pdf + "xref\n0 " + size + "\n" + table + "trailer\n<< /Size " + size +
           " /Root 1 0 R >>\nstartxref\n" + start + "\n%%EOF\n";
}

std::string SamplePdf(unsigned pageCount) {
    return SamplePdf(std::vector<SamplePage>(pageCount));
}

}  // namespace zorvan::cli
