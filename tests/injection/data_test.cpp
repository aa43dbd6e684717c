// Data of a file that enters the output: what stands behind its end, or looks like one, does not run.
#include <gmock/gmock.h>

#include "api/session.h"
#include "injection/device_job.h"
#include "injection/hostile_texts.h"
#include "injection/places.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;

/// Data that ends early, under a filter, and a program behind it.
struct Data {
    std::string filter;  // and parameters
    std::string bytes;
};

constexpr const char* kPrograms[] = {
    "",
    " ZRUN ",
    "\nZRUN\nZRUN\n",
    "\n%%EndData\nZRUN\n",
    "\r%%EndData\rZRUN\r",
    "\n\n%%EndDat\n%%EndData",
    "\n%%EndData",
    "\n%%EOF\n\x04ZRUN\n",
    "\n%%EndResource\nZRUN\n",
    "\n%%BeginResource: x\nZRUN\n",
    "\n>> shfill ZRUN\n",
    "\nEI ZRUN\nQ Q ZRUN ",
    "~> ZRUN <~",
    "> ZRUN <",
    ">>\n} exec ZRUN {",
    ") ZRUN (",
};

// One byte, 128, in each encoding.
const std::string kFlate("\x78\x9C\x6B\x00\x00\x00\x81\x00\x81", 9);
const std::string kLzw("\x80\x20\x20\x20", 4);
const std::string kRunLength("\0\x80\x80", 3);
const std::string kFax("\x00\x10\x01", 3);
const std::string kHex = "80>";
const std::string kBase85 = "J,~>";

std::vector<Data> Ended() {
    std::vector<Data> all;
    for (const std::string program : kPrograms) {
        all.insert(all.end(),
                   {{"/Filter /FlateDecode", kFlate + program},
                    {"/Filter /FlateDecode /DecodeParms << /CloseSource true >>", kFlate + program},
                    {"/Filter /RunLengthDecode", "\5\x80" + program},
                    {"/Filter /LZWDecode", kLzw + program},
                    {"/Filter /RunLengthDecode", kRunLength + program},
                    {"/Filter /CCITTFaxDecode /DecodeParms << /K -1 /Columns 1 >>", kFax + program},
                    {"/Filter /DCTDecode", "\xFF\xD8\xFF\xD9" + program},
                    {"/Filter /ASCIIHexDecode", kHex + program},
                    {"/Filter /ASCII85Decode", kBase85 + program},
                    {"/Filter [/ASCIIHexDecode /RunLengthDecode]", "008080>" + program},
                    {"/Filter /ASCIIHexDecode", program},
                    {"/Filter /FlateDecode", program},
                    {"", "\x80" + program},
                    {"", program}});
    }
    return all;
}

/// A document with all of these as streams with such entries, and a use of each.
PdfBuilder With(const std::vector<Data>& data, const std::string& category, const std::string& entries,
                const std::string& use) {
    std::string content;
    std::string list;
    for (unsigned number = 10; number < 10 + data.size(); ++number) {
        const std::string name = "/R" + std::to_string(number);
        list += name + " " + std::to_string(number) + " 0 R ";
        content.append(name).append(" ").append(use).append("\n");
    }
    PdfBuilder pdf = OnePage(content, "/Resources << /" + category + " << " + list + " >> >>");
    for (unsigned i = 0; i < data.size(); ++i) {
        pdf.Stream(10 + i, data[i].bytes, entries + data[i].filter);
    }
    return pdf;
}

void ExpectThatNothingRunsIn(const std::string& category, const std::string& entries, const std::string& use,
                             const std::vector<Data>& all = Ended()) {
    if (SaidOf(With(all, category, entries, use).Bytes()) == kNothingRan) {
        return;
    }
    ADD_FAILURE() << "something ran, or failed; each alone:";
    for (const Data& data : all) {
        EXPECT_EQ(SaidOf(With({data}, category, entries, use).Bytes()).substr(0, 300), kNothingRan)
            << data.filter << " " << Shown(data.bytes);
    }
}

TEST(DataOf, ImagesEndsWithItsEmbedding) {
    ExpectThatNothingRunsIn(
        "XObject", "/Subtype /Image /Width 1 /Height 1 /BitsPerComponent 8 /ColorSpace /DeviceGray ", "Do");
}

TEST(DataOf, StencilMasksEndsWithItsEmbedding) {
    ExpectThatNothingRunsIn("XObject", "/Subtype /Image /Width 1 /Height 1 /ImageMask true ", "Do");
}

TEST(DataOf, MeshesEndsWithItsEmbedding) {
    ExpectThatNothingRunsIn(
        "Shading",
        "/ShadingType 4 /ColorSpace /DeviceGray /BitsPerCoordinate 8 /BitsPerComponent 8 /BitsPerFlag 8 "
        "/Decode [0 1 0 1 0 1] ",
        "sh");
}

TEST(DataOf, MeshesWithManyFiltersEndsWithItsEmbedding) {
    std::vector<Data> all;
    for (const int count : {2, 3, 8, 9, 40, 300}) {
        std::string filters;
        for (int filter = 0; filter < count; ++filter) {
            filters += "/ASCIIHexDecode ";
        }
        all.push_back({"/Filter [" + filters + "]", "80>\nZRUN\n"s + std::string(300, ' ') + "\nZRUN\n"});
    }
    ExpectThatNothingRunsIn(
        "Shading",
        "/ShadingType 4 /ColorSpace /DeviceGray /BitsPerCoordinate 8 /BitsPerComponent 8 /BitsPerFlag 8 "
        "/Decode [0 1 0 1 0 1] ",
        "sh", all);
}

// Data that cannot be decoded ends its conversion, and so is left out.
TEST(DataOf, TablesEndsWithItsString) {
    for (const std::string program : kPrograms) {
        for (const auto& [filter, data] :
             {std::pair{"/Filter /ASCIIHexDecode", "000000FFFFFF>"s + program},
              std::pair{"/Filter /ASCIIHexDecode", "00" + program + "0000FFFFFF>"},
              std::pair{"/Filter /ASCII85Decode", "!!!!!s8~>"s + program},
              std::pair{"/Filter /ASCII85Decode", "!!" + program + "!!!s8~>"},
              std::pair{"", "abcdef"s + program},
              std::pair{"/Filter /RunLengthDecode", "\5abcdef\x80"s + program}}) {
            PdfBuilder pdf = OnePage("/C cs 1 sc 0 0 9 9 re f",
                                     "/Resources << /ColorSpace << /C [/Indexed /DeviceRGB 1 10 0 R] >> >>");
            const std::string bytes = pdf.Stream(10, data, filter).Bytes();
            if (Convert(bytes).pages == std::vector<int>{0}) {
                EXPECT_EQ(SaidOf(bytes), kNothingRan) << filter << " " << Shown(data);
            }
        }
    }
}

TEST(DataOf, SampledFunctionsEndsWithItsCount) {
    std::vector<std::string> spaces{"[/Separation /A /DeviceGray 10 0 R]",
                                    "[/DeviceN [/A] /DeviceGray 10 0 R]"};
    for (const std::string& space : spaces) {
        for (const std::string program : kPrograms) {
            PdfBuilder pdf =
                OnePage("/C cs 0.5 scn 0 0 9 9 re f", "/Resources << /ColorSpace << /C " + space + " >> >>");
            pdf.Stream(10, "\x01\x80"s + program + "\n%%EndData\nZRUN\n",
                       "/FunctionType 0 /Domain [0 1] /Range [0 1] /Size [2] /BitsPerSample 8");
            EXPECT_EQ(SaidOf(pdf.Bytes()), kNothingRan) << space << " " << Shown(program);
        }
    }
}

// What stands behind the data is content again.
TEST(DataOf, InlineImagesIsEncodedAnew) {
    for (const std::string program : kPrograms) {
        for (const auto& [filter, data] :
             {std::pair{"", "x" + program}, std::pair{"/F /AHx", "80>" + program},
              std::pair{"/F /A85", "J,~>" + program}, std::pair{"/F /A85", program + "J,~>"},
              std::pair{"/F /Fl", kFlate + program}, std::pair{"/F /RL", kRunLength + program},
              std::pair{"/F [/AHx /RL]", "008080>" + program}}) {
            const std::string content = "BI /W 1 /H 1 /BPC 8 /CS /G "s + filter + " ID " + data + "\nEI\n";
            // A page may end where what follows cannot be read.
            EXPECT_THAT(SaidOfOutput(Convert(OnePage(content).Bytes()).output),
                        testing::Not(testing::HasSubstr(kRan)))
                << filter << " " << Shown(data);
        }
    }
}

// As a device reads it: so many bytes, whatever they are.
TEST(DataOf, CompactProgramsEndsWithItsCount) {
    for (const std::string program : kPrograms) {
        PdfBuilder pdf = OnePage("BT /F 9 Tf (A) Tj ET", "/Resources << /Font << /F 10 0 R >> >>");
        pdf.Object(10, "<< /Subtype /Type1 /BaseFont /X /FontDescriptor << /FontFile3 11 0 R >> >>");
        pdf.Stream(11,
                   "\1\0\4\1\0\1\1\1\x04"
                   "Abc"s +
                       program + "\nZRUN\n",
                   "/Subtype /Type1C");
        EXPECT_EQ(SaidOf(pdf.Bytes()), kNothingRan) << Shown(program);
    }
}

TEST(DataOf, TrueTypeProgramsIsDigits) {
    const Place place =
        InFont("", "<< /Subtype /TrueType /BaseFont /X /FontDescriptor << /FontFile2 & 0 R >> >>", "",
               "\0\1\0\0\0\0\0\0\0\0\0\0 > ZRUN < ] ZRUN"s);
    EXPECT_THAT(Convert(place.document({"0"}).Bytes()).output, testing::Not(testing::HasSubstr("ZRUN")));
}

}  // namespace
}  // namespace zorvan::test
