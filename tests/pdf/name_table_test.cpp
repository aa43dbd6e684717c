// Names as numbers and back.
#include "pdf/name_table.h"

#include <string>

#include <gtest/gtest.h>

namespace zorvan::test {
namespace {

class Names : public ::testing::Test {
protected:
    void SetUp() override { table.Fill(); }
    NameTable table;
};

TEST_F(Names, KnowsThePredefinedNamesUnderTheirFixedIdentifiers) {
    EXPECT_EQ(table.InternName("Length"), 1U);
    EXPECT_EQ(table.InternName("Filter"), 2U);
    EXPECT_EQ(table.InternName("Pages"), 29U);
    EXPECT_EQ(table.InternName("AA"), 74U);
    EXPECT_EQ(table.InternName("1.3"), 235U);
    EXPECT_EQ(table.InternName("op"), 268U);
    EXPECT_EQ(table.InternName(".notdef"), 349U);
    EXPECT_EQ(table.InternName("Widget"), 350U);
}

TEST_F(Names, GivesEveryPredefinedIdentifierItsOwnText) {
    for (std::uint32_t identifier = 1; identifier < names::kAfterPredefined; ++identifier) {
        EXPECT_EQ(table.InternName(table.PlainText(identifier)), identifier);
    }
}

TEST_F(Names, KeepsTheThreeSpellingsThatAreNotThoseOfFiles) {
    EXPECT_EQ(table.PlainText(57), "Blackls1");
    EXPECT_EQ(table.PlainText(123), "PDF_INDEX");
    EXPECT_EQ(table.PlainText(124), "Text_INDEX");
    EXPECT_EQ(table.InternName("BlackIs1"), 351U);
    EXPECT_EQ(table.InternName("PDF"), 352U);
    EXPECT_EQ(table.InternName("Text"), 353U);
}

TEST_F(Names, GivesTheSameIdentifierForTheSameNewText) {
    EXPECT_EQ(table.InternName("Gr\xC3\xBCn"), 351U);
    EXPECT_EQ(table.InternName("Other"), 352U);
    EXPECT_EQ(table.InternName("Gr\xC3\xBCn"), 351U);
}

TEST_F(Names, TellsTextsApartThatDifferInCaseOrLengthOnly) {
    EXPECT_NE(table.InternName("length"), table.InternName("Length"));
    EXPECT_NE(table.InternName("Lengt"), table.InternName("Length"));
    EXPECT_NE(table.InternName(""), table.InternName(std::string(1, '\0')));
}

TEST_F(Names, HasNoTextForIdentifiersNeverHandedOut) {
    EXPECT_EQ(table.PlainText(0), "");
    EXPECT_EQ(table.PlainText(351), "");
    EXPECT_EQ(table.PlainText(0xFFFFFFFF), "");
    EXPECT_EQ(table.NameText(0xFFFFFFFF, NameTextMode::kString), "");
}

TEST_F(Names, EscapesParenthesesAndBackslashesForAString) {
    EXPECT_EQ(table.NameText(table.InternName("a(b"), NameTextMode::kString), "a\\(b");
    EXPECT_EQ(table.NameText(table.InternName("\\)/ "), NameTextMode::kString), "\\\\\\)/ ");
}

TEST_F(Names, ReplacesBlanksForAToken) {
    EXPECT_EQ(table.NameText(table.InternName("a b"), NameTextMode::kToken), "a$b");
}

TEST_F(Names, ReplacesDelimitersForATokenSoThatNoneRunsOnTheDevice) {
    EXPECT_EQ(table.NameText(table.InternName("A[(x)print]"), NameTextMode::kToken), "A$$x$print$");
    EXPECT_EQ(table.NameText(table.InternName("<>{}/%"), NameTextMode::kToken), "$$$$$$");
}

TEST_F(Names, ReplacesWhiteSpaceAndControlCharactersForAToken) {
    using namespace std::string_literals;
    EXPECT_EQ(table.NameText(table.InternName("A\nquit\rB\tC\fD\0E\4F"s), NameTextMode::kToken),
              "A$quit$B$C$D$E$F");
}

// 128 to 159 begin binary tokens: "\x88A" would be the number 65, and what follows a word that runs.
TEST_F(Names, ReplacesWhatBeginsABinaryTokenForAToken) {
    EXPECT_EQ(table.NameText(table.InternName("A\x88\x41quit"), NameTextMode::kToken), "A$Aquit");
    EXPECT_EQ(table.NameText(table.InternName("\x7F\x80\x9F\xA0\xFF"), NameTextMode::kToken),
              "\x7F$$\xA0\xFF");
    EXPECT_EQ(table.NameText(table.InternName("\x80\x9F"), NameTextMode::kString), "\x80\x9F");
}

TEST_F(Names, CutsATextToItsLimitBeforeItIsEscaped) {
    const std::uint32_t name = table.InternName("(((");
    EXPECT_EQ(table.NameText(name, NameTextMode::kString, 2), "\\(\\(");
    EXPECT_EQ(table.NameText(name, NameTextMode::kString, 0), "");
}

TEST_F(Names, KeepsTheTextsOfManyAndLongNames) {
    const std::string longName(50000, 'x');
    const std::uint32_t first = table.InternName(longName);
    for (int i = 0; i < 50000; ++i) {
        static_cast<void>(table.InternName("name" + std::to_string(i)));
    }
    EXPECT_EQ(table.PlainText(first), longName);
    EXPECT_EQ(table.PlainText(first + 1), "name0");
    EXPECT_EQ(table.PlainText(first + 50000), "name49999");
    EXPECT_EQ(table.InternName("name25000"), first + 25001);
}

}  // namespace
}  // namespace zorvan::test
