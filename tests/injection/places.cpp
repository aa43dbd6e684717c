// Composing the documents.
#include "injection/places.h"

#include <gtest/gtest.h>

#include "api/session.h"
#include "fonts/true_type_builder.h"
#include "injection/device_job.h"
#include "injection/hostile_texts.h"

namespace zorvan::test {
namespace {

constexpr unsigned kFirst = 10;
constexpr unsigned kSecond = 1000;  // how far an object's second one is from it

std::string Filled(const std::string& text, const std::string& token, unsigned number) {
    std::string filled;
    for (const char letter : text) {
        filled += letter == '@'   ? token
                  : letter == '#' ? std::to_string(number)
                  : letter == '&' ? std::to_string(number + kSecond)
                                  : std::string(1, letter);
    }
    return filled;
}

std::string FilledForEach(const std::string& text, const std::vector<std::string>& tokens) {
    std::string filled;
    unsigned number = kFirst;
    for (const std::string& token : tokens) {
        filled += Filled(text, token, number++) + "\n";
    }
    return filled;
}

/// What the templates name: a halftone, a function, a TrueType program, a glyph, a font, a form.
void AddShared(PdfBuilder& pdf) {
    pdf.Object(500, "<< /HalftoneType 1 /Frequency 60 /Angle 45 /SpotFunction /Round >>")
        .Object(501, "<< /FunctionType 2 /Domain [0 1] /C0 [0] /C1 [1] /N 1 >>")
        .Stream(502,
                TrueTypeBuilder()
                    .Table("head", Head({0, 0, 9, 9}))
                    .Table("maxp", Maxp(2))
                    .Table("loca", Words({0, 0, 0}))
                    .Table("cmap", Cmap({{3, 1, Format4({{65, 66, 0, {1, 1}}, {0xFFFF, 0xFFFF, 1, {}}})}}))
                    .Bytes())
        .Stream(503, "9 0 d0 0 0 9 9 re f")
        .Object(504, "<< /Subtype /Type1 /BaseFont /Helvetica >>")
        .Stream(505, "0 0 9 9 re f", "/Subtype /Form /BBox [0 0 9 9]");
}

PdfBuilder PageOfResources(const std::string& category, const std::string& list, const std::string& content) {
    PdfBuilder pdf = OnePage(content, "/Resources << /" + category + " << " + list + " >> >>");
    AddShared(pdf);
    return pdf;
}

}  // namespace

Place InContent(const std::string& name, const std::string& content) {
    return {name, [content](const auto& tokens) {
                return PageOfResources("Font", "/F 504 0 R >> /XObject << /X 505 0 R",
                                       FilledForEach(content, tokens));
            }};
}

Place InResource(const std::string& name, const std::string& category, const std::string& object,
                 const std::string& use) {
    return {name, [=](const auto& tokens) {
                PdfBuilder pdf =
                    PageOfResources(category, FilledForEach("/R# # 0 R", tokens), FilledForEach(use, tokens));
                for (unsigned i = 0; i < tokens.size(); ++i) {
                    pdf.Object(kFirst + i, Filled(object, tokens[i], kFirst + i));
                }
                return pdf;
            }};
}

Place InStream(const std::string& name, const std::string& category, const std::string& entries,
               const std::string& data, const std::string& use) {
    return {name, [=](const auto& tokens) {
                PdfBuilder pdf =
                    PageOfResources(category, FilledForEach("/R# # 0 R", tokens), FilledForEach(use, tokens));
                for (unsigned i = 0; i < tokens.size(); ++i) {
                    pdf.Stream(kFirst + i, data, Filled(entries, tokens[i], kFirst + i));
                }
                return pdf;
            }};
}

Place InFont(const std::string& name, const std::string& font, const std::string& streamEntries,
             const std::string& streamData) {
    const Place place = InResource(name, "Font", font, "BT /R# 9 Tf (AB) Tj ET");
    return {name, [=](const auto& tokens) {
                PdfBuilder pdf = place.document(tokens);
                for (unsigned i = 0; i < tokens.size() && !streamData.empty(); ++i) {
                    pdf.Stream(kSecond + kFirst + i, streamData,
                               Filled(streamEntries, tokens[i], kFirst + i));
                }
                return pdf;
            }};
}

Place InForm(const std::string& name, const std::string& entry) {
    return InStream(name, "XObject", "/Subtype /Form /BBox [0 0 9 9] " + entry, "0 0 9 9 re f", "/R# Do");
}

Place InPage(const std::string& name, const std::string& entry) {
    return {name, [entry](const auto& tokens) {
                std::vector<std::string> pages;
                pages.reserve(tokens.size());
                for (const std::string& token : tokens) {
                    pages.push_back(Filled(entry, token, kFirst));
                }
                return Pages(pages);
            }};
}

void ExpectThatNothingRuns(const Place& place, const std::vector<std::string>& tokens) {
    if (SaidOf(place.document(tokens).Bytes()) == kNothingRan) {
        return;
    }
    ADD_FAILURE() << "something ran, or failed; each text alone:";
    for (const std::string& token : tokens) {
        EXPECT_EQ(SaidOf(place.document({token}).Bytes()).substr(0, 300), kNothingRan) << Shown(token);
    }
}

bool IsWritten(const Place& place, const std::string& token, const std::string& text) {
    return Convert(place.document({token}).Bytes()).output.find(text) != std::string::npos;
}

}  // namespace zorvan::test
