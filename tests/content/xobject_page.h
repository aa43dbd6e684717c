// Pages that draw XObjects, and what their setup and their content become.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "api/session.h"
#include "content/xobject_factory.h"
#include "fonts/font_page.h"
#include "ps/fake_resources.h"

namespace zorvan::test {

/// A document of one page with this content and these XObjects; the objects from 10 on are the test's.
inline PdfBuilder DrawingPage(std::string_view content, std::string_view xobjects = "/X 10 0 R") {
    return OnePage(content, "/Resources << /XObject << " + std::string(xobjects) + " >> >>");
}

/// The definitions of a page's setup, and its content.
struct Drawing {
    std::string setup;
    std::string content;
};

/// What the page becomes; everything must go well.
inline Drawing Draw(PdfBuilder pdf) {
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, 0) << conversion.error.message;
    return {PageSetupOf(conversion.output), ContentOf(conversion.output)};
}

/// The same of a page that goes on although an error is recorded with an object.
inline Drawing DrawRecording(int code, PdfBuilder pdf, unsigned object) {
    const Conversion conversion = Convert(pdf.Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, code);
    EXPECT_EQ(conversion.error.offset, pdf.OffsetOf(object));
    return {PageSetupOf(conversion.output), ContentOf(conversion.output)};
}

/// What the data of an image becomes, here as ASCIIHex, which passes through.
inline std::string HexImageData(std::string_view name, std::string_view digits, int intent = 0) {
    return "/" + std::string(name) + " currentfile <</Filter /ASCIIHexDecode\n/Intent " +
           std::to_string(intent) +
           " >> /ReusableStreamDecode\n%%BeginData: " + std::to_string(digits.size()) + " Bytes\nfilter\n" +
           std::string(digits) + "\n%%EndData\n/DataSource defineRes pop\n";
}

/// A gray image of one pixel; its data is a pair of digits.
constexpr const char* kPixel =
    "/Subtype /Image /Width 1 /Height 1 /BitsPerComponent 8 /ColorSpace /DeviceGray /Filter /ASCIIHexDecode";

/// What drawing such an image becomes.
inline std::string PixelDrawn(std::string_view name) {
    return "DefaultGray setcolorspace\n<</ImageType 1\n/Width 1\n/Height 1\n/BitsPerComponent 8\n"
           "/ImageMatrix [1 0 0 -1 0 1]\n/Decode [0 1]\n/Interpolate false\n/DataSource /" +
           std::string(name) + " /DataSource findRes\n>>\nimage\n";
}

/// What a form becomes that says nothing of its type and matrix; its box is 0 0 10 10.
inline std::string FormDefined(std::string_view name, std::string_view content) {
    return "/" + std::string(name) +
           " <<\n/FormType 1\n/BBox [0 0 10 10 ]\n/Matrix [1 0 0 1 0 0]\n/PaintProc {pop save {\n" +
           std::string(content) + "} exec restore} bind >> /Form defineRes pop\n";
}

constexpr const char* kForm = "/Subtype /Form /BBox [0 0 10 10] ";

/// A job with the library's own XObjects, whose other resources, colour spaces among them, are fakes.
class XObjectsAmongFakes : public FakeResourceTest {
protected:
    void SetUp() override {
        FakeResourceTest::SetUp();
        CurrentJob()->factories[ListOf(ResourceCategory::kXObject)] = CreateXObjectResource;
    }
};

}  // namespace zorvan::test
