// Composes the report as lines and as JSON.
#include "cli/info_report.h"

#include "cli/json_text.h"
#include "cli/number_text.h"
#include "cli/printable_text.h"
#include "cli/system.h"

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

// Nothing for a font of the device: of what type it is there, no file tells.
const char* TypeName(FontKind kind) {
    switch (kind) {
        case FontKind::kOfDevice:
            return "";
        case FontKind::kType1:
            return "Type 1";
        case FontKind::kCompact:
            return "Type 1C";
        case FontKind::kTrueType:
            return "TrueType";
        case FontKind::kType3:
            return "Type 3";
        case FontKind::kCIDCompact:
            return "CID Type 1C";
        case FontKind::kCIDTrueType:
            return "CID TrueType";
    }
    return "";
}

std::string FontAsText(const FontInfo& font) {
    const bool isEmbedded = font.kind != FontKind::kOfDevice;
    return "Font " + OneLine(font.name) + ": " +
           (isEmbedded ? TypeName(font.kind) + std::string(", embedded") : "asked of the device") + "\n";
}

std::string FontAsJson(const FontInfo& font) {
    const bool isEmbedded = font.kind != FontKind::kOfDevice;
    return R"({"name": )" + JsonString(font.name) + R"(, "type": )" +
           (isEmbedded ? JsonString(TypeName(font.kind)) : "null") + R"(, "embedded": )" +
           (isEmbedded ? "true" : "false") + "}";
}

std::string FontsAsJson(const std::vector<FontInfo>& fonts) {
    std::string json;
    for (const FontInfo& font : fonts) {
        json += (json.empty() ? "" : ", ") + FontAsJson(font);
    }
    return "[" + json + "]";
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
    text += "Fonts: " + std::to_string(report.fonts.size()) + "\n";
    for (const FontInfo& font : report.fonts) {
        text += FontAsText(font);
    }
    return text + "Output bytes: " + std::to_string(report.outputBytes) + "\n";
}

std::string InfoAsJson(const InfoReport& report) {
    return R"({"file": )" + JsonString(PathAsUtf8(report.file)) + R"(, "pages": )" +
           std::to_string(report.pageCount) + R"(, "visibleBoxes": )" + PagesAsJson(report.pages) +
           R"(, "fonts": )" + FontsAsJson(report.fonts) + R"(, "outputBytes": )" +
           std::to_string(report.outputBytes) + R"(, "error": )" + ErrorAsJson(report.error) + "}\n";
}

}  // namespace zorvan::cli
