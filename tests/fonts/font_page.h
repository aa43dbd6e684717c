// One page that names fonts, and what its setup becomes.
#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "api/session.h"

namespace zorvan::test {

/// A document of one page with these fonts; object 4 is its content, and the objects from 10 on are the
/// test's.
inline PdfBuilder FontPage(std::string_view fonts = "/F1 10 0 R", std::string_view content = "n") {
    return OnePage(content, "/Resources << /Font << " + std::string(fonts) + " >> >>");
}

/// What the page's setup defines; everything must go well.
inline std::string DefinitionsOf(PdfBuilder pdf) {
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, 0) << conversion.error.message;
    return PageSetupOf(conversion.output);
}

/// The same for one font dictionary with these entries, object 10.
inline std::string DefinitionsOfFont(std::string_view entries) {
    return DefinitionsOf(FontPage().Object(10, "<< /Type /Font " + std::string(entries) + " >>"));
}

/// A font fails: the page gives the code, which is recorded with an object. What its setup holds up to then.
inline std::string DefinitionsUpTo(int code, PdfBuilder pdf, unsigned object) {
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{code});
    EXPECT_EQ(conversion.error.code, code);
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(object));
    const std::string written = PageSetupOf(conversion.output);
    return written.substr(0, written.find("%%Trailer\n"));
}

/// How often a text occurs.
inline int CountOf(std::string_view text, std::string_view part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

}  // namespace zorvan::test
