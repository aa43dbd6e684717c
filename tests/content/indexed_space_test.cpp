// Indexed spaces: their base, and their table as it stands or encoded anew.
#include <string>
#include <tuple>

#include <gmock/gmock.h>

#include "content/space_page.h"

namespace zorvan::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

PdfBuilder IndexedPage(const std::string& entries, std::string_view table = kTable,
                       std::string_view filter = "") {
    PdfBuilder pdf = SpacePage().Object(10, "[/Indexed " + entries + " 11 0 R]");
    return pdf.Stream(11, table, filter);
}

TEST(IndexedSpace, HasItsTableAsAnAscii85String) {
    EXPECT_EQ(Defined(IndexedPage("/DeviceRGB 1")).page,
              Definition("N10", std::string("[/Indexed DefaultRGB 1\n") + kTableText + "]"));
    EXPECT_EQ(Defined(IndexedPage("/DeviceRGB 1", "303030303030464646464646>",
                                  "/Filter [/ASCIIHexDecode /ASCIIHexDecode]"))
                  .page,
              Definition("N10", std::string("[/Indexed DefaultRGB 1\n") + kTableText + "]"));
}

TEST(IndexedSpace, HasALongerTableCut) {
    EXPECT_EQ(Defined(IndexedPage("/DeviceRGB 1", kTable + "more")).page,
              Defined(IndexedPage("/DeviceRGB 1")).page);
}

TEST(IndexedSpace, HasAShorterTableLeftOut) {
    EXPECT_EQ(Defined(IndexedPage("/DeviceRGB 2")).page, Definition("N10", "[/Indexed DefaultRGB 2\n<~~>]"));
    EXPECT_EQ(Defined(IndexedPage("/DeviceCMYK 1")).page,
              Definition("N10", "[/Indexed DefaultCMYK 1\n<~~>]"));
}

TEST(IndexedSpace, HasNoTableForASenselessHighestIndex) {
    for (const std::string highest : {"-1", "-5", "-2147483648", "2147483647"}) {
        EXPECT_EQ(Defined(IndexedPage("/DeviceRGB " + highest)).page,
                  Definition("N10", "[/Indexed DefaultRGB " + highest + "\n<~~>]"));
    }
    for (const std::string highest : {"2147483648", "null", "/One", "1e999", "(1)", "99999999999999999999"}) {
        EXPECT_THAT(Defined(IndexedPage("/DeviceRGB " + highest)).page,
                    StartsWith("/N10 [/Indexed DefaultRGB "))
            << highest;
    }
}

TEST(IndexedSpace, HasABareDeviceNameOnceAndAnArrayTwice) {
    const auto begin = [](const std::string& base) {
        return Between(Defined(IndexedPage(base + " 0", "abcd").Object(12, kCalRgb)).page, "/N10 ", "0\n");
    };
    EXPECT_EQ(begin("/DeviceRGB"), "[/Indexed DefaultRGB ");
    EXPECT_EQ(begin("[/DeviceRGB]"), "[/Indexed DefaultRGB DefaultRGB ");
    EXPECT_EQ(begin("12 0 R"), "[/Indexed /N12 /ColorSpace findRes ");
}

TEST(IndexedSpace, HasAnArrayAsItsDefinitionAndANumberThatIsNeverDefined) {
    const std::string written = Defined(IndexedPage(std::string(kCalRgb) + " 1")).page;
    EXPECT_EQ(written, Definition("N10", std::string("[/Indexed ") + kCalRgbText +
                                             "/N589823 /ColorSpace findRes 1\n" + kTableText + "]"));
    const std::string twice = "[/Indexed " + std::string(kCalGray) + " 0 11 0 R]";
    PdfBuilder pdf = SpacePage("n", "/A 10 0 R /B 12 0 R").Object(10, twice).Object(12, twice);
    const std::string both = Defined(pdf.Stream(11, "a")).page;
    EXPECT_EQ(CountOf(both, "/N589823 /ColorSpace findRes 0\n"), 1);
    EXPECT_EQ(CountOf(both, "/N589824 /ColorSpace findRes 0\n"), 1);
}

TEST(IndexedSpace, DefinesAReferencedBaseFirst) {
    EXPECT_EQ(
        Defined(IndexedPage("12 0 R 1").Object(12, kCalRgb)).page,
        Definition("N12", kCalRgbText) +
            Definition("N10", std::string("[/Indexed /N12 /ColorSpace findRes 1\n") + kTableText + "]"));
}

TEST(IndexedSpace, PassesAHexadecimalTableThrough) {
    EXPECT_EQ(Defined(IndexedPage("/DeviceRGB 1", "00 0000\nFFffFF>", "/Filter /ASCIIHexDecode")).page,
              Definition("N10", "[/Indexed DefaultRGB 1\n<00 0000\nFFffFF>]"));
    EXPECT_EQ(Defined(IndexedPage("/DeviceRGB 5", "00>\r\n \t", "/Filter /ASCIIHexDecode")).page,
              Definition("N10", "[/Indexed DefaultRGB 5\n<00>\r\n \t]"));
}

TEST(IndexedSpace, PassesAnAscii85TableThrough) {
    EXPECT_EQ(Defined(IndexedPage("/DeviceRGB 1", "!!!$!\ns8N~>\n", "/Filter /ASCII85Decode")).page,
              Definition("N10", "[/Indexed DefaultRGB 1\n<~!!!$!\ns8N~>\n]"));
    EXPECT_EQ(Defined(IndexedPage("/DeviceGray 3", "z~>", "/Filter /ASCII85Decode")).page,
              Definition("N10", "[/Indexed DefaultGray 3\n<~z~>]"));
}

TEST(IndexedSpace, WritesAnewWhatIsNoSuchStringWithNothingBehindIt) {
    const std::string expected =
        Definition("N10", std::string("[/Indexed DefaultRGB 1\n") + kTableText + "]");
    for (const auto& [table, filter] : {
             std::tuple{"000000FFFFFF", "/ASCIIHexDecode"},
             std::tuple{"000000FFFFFF> quit", "/ASCIIHexDecode"},
             std::tuple{"000000FFFFFF>>", "/ASCIIHexDecode"},
             std::tuple{"!!!$!s8N", "/ASCII85Decode"},
             std::tuple{"!!!$!s8N~> quit", "/ASCII85Decode"},
             std::tuple{"!!!$!s8N~>]", "/ASCII85Decode"},
         }) {
        EXPECT_EQ(Defined(IndexedPage("/DeviceRGB 1", table, std::string("/Filter ") + filter)).page,
                  expected)
            << table;
    }
}

TEST(IndexedSpace, NeverLetsAForeignByteThroughAsItStands) {
    for (const auto& [table, filter] :
         {std::tuple{"00(0000>", "/ASCIIHexDecode"}, std::tuple{"<~00>", "/ASCIIHexDecode"},
          std::tuple{"<~!!!$!s8N~>", "/ASCII85Decode"}, std::tuple{"!!v~>", "/ASCII85Decode"},
          std::tuple{"!!\x80~>", "/ASCII85Decode"}, std::tuple{"!!~ >", "/ASCII85Decode"}}) {
        const Conversion conversion =
            Convert(IndexedPage("/DeviceRGB 9", table, std::string("/Filter ") + filter).Bytes());
        const std::string raw = filter == std::string("/ASCIIHexDecode") ? "<" : "<~";
        EXPECT_THAT(conversion.output, Not(HasSubstr("9\n" + raw + table))) << table;
    }
}

// The largest number is "s8W-!"; "z" stands for four zeros and not inside a number.
TEST(IndexedSpace, NeverLetsDigitsThroughThatAreNoNumbers) {
    const auto output = [](const std::string& table) {
        return Convert(IndexedPage("/DeviceGray 3", table, "/Filter /ASCII85Decode").Bytes()).output;
    };
    for (const std::string table : {"s8W-!~>", "z~>", "!!!!!z!!~>", "s8W-!rr~>", "!!\f!!\t!~>"}) {
        EXPECT_THAT(output(table), HasSubstr("3\n<~" + table)) << table;
    }
    for (const std::string table :
         {"s8W-\"~>", "uuuuu~>", "!!z!!!~>", "!!!!!!~>", "!!!!!uu~>", "!!\b!!!~>", "!! ZRUN !!!s8~>"}) {
        EXPECT_THAT(output(table), Not(HasSubstr("<~" + table))) << table;
    }
}

TEST(IndexedSpace, FailsThePageForATableThatIsNoStream) {
    for (const std::string table :
         {"<000000FFFFFF>", "(abcdef)", "5", "null", "/T", "<< >>", "99 0 R", "12 0 R"}) {
        PdfBuilder pdf =
            SpacePage().Object(10, "[/Indexed /DeviceRGB 1 " + table + "]").Object(12, "(abcdef)");
        EXPECT_EQ(DefinitionsUpTo(-4095, pdf, 10), "") << table;
    }
    EXPECT_EQ(DefinitionsUpTo(-4095, SpacePage().Object(10, "[/Indexed]"), 10), "");
}

TEST(IndexedSpace, FailsThePageForADamagedTable) {
    const Conversion conversion =
        Convert(IndexedPage("/DeviceRGB 1", "not compressed", "/Filter /FlateDecode").Bytes());
    EXPECT_EQ(conversion.pages, std::vector<int>{-4092});
    EXPECT_EQ(conversion.error.code, -4092);
}

TEST(IndexedSpace, FailsTheSetupForATableOfTwoPagesThatIsNoStream) {
    const std::string entries = "/Resources << /ColorSpace << /A 10 0 R >> >>";
    const Conversion conversion =
        Convert(Pages({entries, entries}).Object(10, "[/Indexed /DeviceRGB 1 (abcdef)]").Bytes());
    EXPECT_EQ(conversion.global, -4095);
    EXPECT_EQ(conversion.error.code, -4095);
}

}  // namespace
}  // namespace zorvan::test
