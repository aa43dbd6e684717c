// Taking Type 1 programs apart.
#include "fonts/type1_program.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace zorvan::test {
namespace {

using namespace std::string_literals;

const std::string kClear = "%!PS-AdobeFont-1.0: Foo\n/FontName /Foo def\ncurrentfile eexec\n";
const std::string kBinary = "\x01\xFE\x00 binary 0\x80 data \xFF\n\x02"s;
const std::string kTrailer = "\n"s + std::string(64, '0') + "\n" + std::string(64, '0') + "\ncleartomark\n";

using Parts = std::pair<std::string, std::string>;

Parts PartsOf(std::string_view program, std::size_t length1, std::size_t length2) {
    const std::vector<std::uint8_t> bytes(program.begin(), program.end());
    const Type1Parts parts(bytes, length1, length2);
    return {{parts.Clear().begin(), parts.Clear().end()},
            {parts.Encrypted().begin(), parts.Encrypted().end()}};
}

TEST(Type1Parts, HaveTheLengthsThatAreDeclared) {
    EXPECT_EQ(PartsOf(kClear + kBinary + kTrailer, kClear.size(), kBinary.size()), Parts(kClear, kBinary));
    EXPECT_EQ(PartsOf(kClear + kBinary, kClear.size(), kBinary.size()), Parts(kClear, kBinary));
}

TEST(Type1Parts, EndWhereTheProgramEnds) {
    EXPECT_EQ(PartsOf(kClear + kBinary, kClear.size(), 100000), Parts(kClear, kBinary));
    EXPECT_EQ(PartsOf(kClear + kBinary, 100000, 100000), Parts(kClear + kBinary, ""));
    EXPECT_EQ(PartsOf(kClear + kBinary, kClear.size() + kBinary.size(), 5), Parts(kClear + kBinary, ""));
    EXPECT_EQ(PartsOf("", 10, 10), Parts("", ""));
    EXPECT_EQ(PartsOf("", 0, 0), Parts("", ""));
}

TEST(Type1Parts, MeetBehindTheLineEndOfEexecWhenTheDeclaredBorderIsAFewBytesOff) {
    const std::string program = kClear + kBinary + kTrailer;
    for (std::size_t slip = 1; slip <= 10; ++slip) {
        EXPECT_EQ(PartsOf(program, kClear.size() - slip, kBinary.size() + slip), Parts(kClear, kBinary))
            << slip;
        EXPECT_EQ(PartsOf(program, kClear.size() + slip, kBinary.size() - slip), Parts(kClear, kBinary))
            << slip;
    }
}

TEST(Type1Parts, MeetBehindAllWhiteSpaceOfEexec) {
    for (const std::string space : {"\r", "\n", "\r\n", " ", "\t\n"}) {
        const std::string clear = "currentfile eexec" + space;
        EXPECT_EQ(PartsOf(clear + kBinary, clear.size(), kBinary.size()), Parts(clear, kBinary));
        EXPECT_EQ(PartsOf(clear + kBinary, 17, kBinary.size() + space.size()), Parts(clear, kBinary));
    }
}

TEST(Type1Parts, KeepADeclaredBorderFarFromEexec) {
    EXPECT_EQ(PartsOf(kClear + kBinary, 20, 10), Parts(kClear.substr(0, 20), kClear.substr(20, 10)));
    const std::string padding(60, '\x03');
    EXPECT_EQ(PartsOf(kClear + padding + kBinary, kClear.size() + 60, kBinary.size()),
              Parts(kClear + padding, kBinary));
    EXPECT_EQ(PartsOf("%!PS no such word" + kBinary, 17, kBinary.size()),
              Parts("%!PS no such word", kBinary));
}

TEST(Type1Parts, AreFoundOutWhenNoLengthIsDeclared) {
    EXPECT_EQ(PartsOf(kClear + kBinary + kTrailer, 0, 0), Parts(kClear, kBinary));
    EXPECT_EQ(PartsOf(kClear + kBinary, 0, 0), Parts(kClear, kBinary));
}

TEST(Type1Parts, EndBeforeTheTrailerWhenTheSecondLengthIsNotDeclared) {
    EXPECT_EQ(PartsOf(kClear + kBinary + kTrailer, kClear.size(), 0), Parts(kClear, kBinary));
    EXPECT_EQ(PartsOf(kClear + kTrailer, kClear.size(), 0).second, "");
}

TEST(Type1Parts, CountTheSecondLengthFromTheBorderThatIsFoundOut) {
    EXPECT_EQ(PartsOf(kClear + kBinary + kTrailer, 0, kBinary.size()), Parts(kClear, kBinary));
}

TEST(Type1Parts, LoseTheHeadersOfSegments) {
    const auto segment = [](char type, const std::string& data) {
        return "\x80"s + type + static_cast<char>(data.size()) + "\0\0\0"s + data;
    };
    const std::string binary(200, '\x90');
    const std::string program = segment(1, kClear.substr(0, 20)) + segment(1, kClear.substr(20)) +
                                segment(2, binary) + segment(2, kBinary) + segment(1, kTrailer) + "\x80\x03";
    EXPECT_EQ(PartsOf(program, 0, 0), Parts(kClear, binary + kBinary));
    EXPECT_EQ(PartsOf(program, kClear.size(), 5), Parts(kClear, binary + kBinary));
}

TEST(Type1Parts, TakeOfACutSegmentWhatIsThere) {
    const std::string clear = "\x80\x01"s + static_cast<char>(kClear.size()) + "\0\0\0"s + kClear;
    EXPECT_EQ(PartsOf(clear + "\x80\x02\xFF\xFF\xFF\xFF" + kBinary, 0, 0), Parts(kClear, kBinary));
    EXPECT_EQ(PartsOf(clear + "\x80\x02\xFF", 0, 0), Parts(kClear, ""));
    EXPECT_EQ(PartsOf("\x80\x01\xFF\xFF\xFF\xFF" + kClear, 0, 0), Parts(kClear, ""));
    EXPECT_EQ(PartsOf("\x80\x01\0\0\0\0"s, 0, 0), Parts("", ""));
}

TEST(Type1Parts, HoldTheBytesThatHexadecimalDigitsStandFor) {
    EXPECT_EQ(PartsOf(kClear + "0aFf 80\r\n01" + kTrailer, kClear.size(), 12),
              Parts(kClear, "\x0A\xFF\x80\x01"));
    EXPECT_EQ(PartsOf(kClear + "0aFf80017", kClear.size(), 9), Parts(kClear, "\x0A\xFF\x80\x01"));
}

TEST(Type1Parts, AreBinaryWithOneOddByteAmongTheFirstFour) {
    EXPECT_EQ(PartsOf(kClear + "0aFg80", kClear.size(), 6), Parts(kClear, "0aFg80"));
    EXPECT_EQ(PartsOf(kClear + "abc", kClear.size(), 3), Parts(kClear, "abc"));
}

}  // namespace
}  // namespace zorvan::test
