// What --info prints.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/info_sink.h"
#include "cli/library_session.h"

namespace zorvan::cli {

struct InfoReport {
    std::string file;
    unsigned pageCount = 0;       // of the document
    std::vector<PageInfo> pages;  // those that were asked for and could be converted
    std::vector<FontInfo> fonts;
    std::uint64_t outputBytes = 0;
    LibraryError error;
};

// One fact a line:
//     Pages: 2
//     Page 1: 0 0 612 792
//     Page 2: none
//     Fonts: 2
//     Font Helvetica: asked of the device
//     Font ABCDEF+Sample: Type 1C, embedded
//     Output bytes: 61234
std::string InfoAsText(const InfoReport& report);

// One object on one line: {"file": "a.pdf", "pages": 2, "visibleBoxes": [{"page": 1, "box": [0, 0, 612,
// 792]}, {"page": 2, "box": null}], "fonts": [{"name": "Helvetica", "type": null, "embedded": false}],
// "outputBytes": 61234, "error": null}. The type is "Type 1", "Type 1C", "TrueType" or "Type 3". An error is
// {"code": -4094, "text": "...", "offset": 0, "excerpt": "..."}, where the excerpt's unprintable bytes are
// escaped as in messages.
std::string InfoAsJson(const InfoReport& report);

}  // namespace zorvan::cli
