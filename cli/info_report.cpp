// Composes the report as lines and as JSON.
#include "cli/info_report.h"

#include "cli/json_text.h"
#include "cli/number_text.h"
#include "cli/printable_text.h"

namespace zorvan::cli {
namespace {

std::string BoxText(const Box& box, const std::string& between) {
    return NumberText(box.x0) + between + NumberText(box.y0) + between + NumberText(box.x1) + between +
           NumberText(box.y1);
}

std::string PageAsJson(const PageInfo& info) {
    const std::string numbers = info.visibleBox ? BoxText(*info.visibleBox, ", ") : "";
    const std::string box = info.visibleBox ? "[" + numbers + "]" : "null";
    return R"({"page": )" + std::to_string(info.page) + R"(, "box": )" + box + "}";
}

std::string PagesAsJson(const std::vector<PageInfo>& pages) {
    std::string json;
    for (const PageInfo& info : pages) {
        json += (json.empty() ? "" : ", ") + PageAsJson(info);
    }
    return "[" + json + "]";
}

// The excerpt is bytes of any kind: it is made printable as in messages.
std::string ErrorAsJson(const LibraryError& error) {
    if (error.code == 0) {
        return "null";
    }
    const std::string quoted = QuotedBytes(error.excerpt);
    return R"({"code": )" + std::to_string(error.code) + R"(, "text": )" + JsonString(error.text) +
           R"(, "offset": )" + std::to_string(error.offset) + R"(, "excerpt": )" +
           JsonString(std::string_view(quoted).substr(1, quoted.size() - 2)) + "}";
}

}  // namespace

std::string InfoAsText(const InfoReport& report) {
    std::string text = "Pages: " + std::to_string(report.pageCount) + "\n";
    for (const PageInfo& info : report.pages) {
        text += "Page " + std::to_string(info.page) + ": " +
                (info.visibleBox ? BoxText(*info.visibleBox, " ") : "none") + "\n";
    }
    return text + "Output bytes: " + std::to_string(report.outputBytes) + "\n";
}

std::string InfoAsJson(const InfoReport& report) {
    return R"({"file": )" + JsonString(report.file) + R"(, "pages": )" + std::to_string(report.pageCount) +
           R"(, "visibleBoxes": )" + PagesAsJson(report.pages) + R"(, "outputBytes": )" +
           std::to_string(report.outputBytes) + R"(, "error": )" + ErrorAsJson(report.error) + "}\n";
}

}  // namespace zorvan::cli
