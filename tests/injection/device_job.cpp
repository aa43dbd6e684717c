// Converting, running, and looking for forged pages.
#include "injection/device_job.h"

#include <algorithm>
#include <string_view>

#include <gtest/gtest.h>

#include "prolog/prolog_job.h"
#include "support/host.h"

namespace zorvan::test {
namespace {

/// How many lines begin with the text; a document's lines end as its comments do.
std::size_t LinesWith(std::string text, std::string_view begin) {
    std::ranges::replace_if(
        text, [](char letter) { return letter == '\r' || letter == '\f'; }, '\n');
    const std::string searched = "\n" + std::string(begin);
    std::size_t count = 0;
    for (std::size_t at = text.find(searched); at != std::string::npos; at = text.find(searched, at + 1)) {
        ++count;
    }
    return count;
}

}  // namespace

std::string SaidOfOutput(const std::string& output) {
    const std::string forged = LinesWith(output, "%%Page: 666") > 0 ? "a page was forged\n" : "";
    return forged + Interpret("-sDEVICE=nullpage",
                              "userdict /ZRUN {(ran) = flush} put\n" + output + "\n(ended ) print count =\n")
                        .text;
}

std::string SaidOf(const std::string& pdf) {
    const Conversion conversion = Convert(pdf);
    EXPECT_EQ(conversion.fileBegin, 0);
    EXPECT_EQ(conversion.global, 0);
    for (const int page : conversion.pages) {
        EXPECT_EQ(page, 0);
    }
    return SaidOfOutput(conversion.output);
}

}  // namespace zorvan::test
