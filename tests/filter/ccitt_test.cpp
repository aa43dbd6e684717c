// CCITTFax: the code words that stand for rows, damage, and all parameters both ways.
#include <gtest/gtest.h>

#include "tests/filter/codec_harness.h"
#include "tests/filter/fax_bitmaps.h"

namespace zorvan::filter {
namespace {

std::string EncodeFax(const FilterCcittParameters& parameters, std::string_view data,
                      std::size_t chunk = kNoLimit) {
    return Encode({FILTER_ENCODE_CCITTFAX, &parameters}, data, chunk);
}

// In buffers of 3 bytes, so that the end of a buffer falls anywhere.
Decoded DecodeFax(const FilterCcittParameters& parameters, std::string_view data) {
    const Coding decoder{FILTER_DECODE_CCITTFAX, &parameters};
    const Decoded decoded = Decode(decoder, data, 3);
    EXPECT_EQ(decoded, Decode(decoder, data));
    return decoded;
}

Decoded Whole(std::string bytes) {
    return {std::move(bytes), Progress::kEnd};
}

// Both directions at once.
void ExpectCode(const FilterCcittParameters& parameters, const std::string& rows, std::string_view bits) {
    EXPECT_EQ(EncodeFax(parameters, rows), Bits(bits)) << bits;
    EXPECT_EQ(DecodeFax(parameters, Bits(bits)), Whole(rows)) << bits;
}

FilterCcittParameters WithoutEndOfBlock(FilterCcittParameters parameters) {
    parameters.end_of_block = 0;
    return parameters;
}

// Every combination of the parameters that the data's form depends on.
std::vector<FilterCcittParameters> AllForms(int columns) {
    std::vector<FilterCcittParameters> forms;
    for (const int k : {-1, 0, 1, 4}) {
        for (int flags = 0; flags < 16; ++flags) {
            FilterCcittParameters parameters = FaxParameters(k, columns);
            parameters.end_of_line = flags & 1;
            parameters.encoded_byte_align = flags >> 1 & 1;
            parameters.end_of_block = flags >> 2 & 1;
            parameters.black_is_1 = flags >> 3 & 1;
            forms.push_back(parameters);
        }
    }
    return forms;
}

constexpr const char* kEol = "000000000001 ";
constexpr const char* kRtc = "000000000001 000000000001 000000000001 000000000001 000000000001 000000000001";
constexpr const char* kEofb = "000000000001 000000000001";

TEST(CcittCodes, OfRunsStandOneBehindTheOther) {
    // White 4, black 3, white 9, end of block.
    ExpectCode(FaxParameters(0, 16), Rows("....###.........", 16), "1011 10 10100 " + std::string(kRtc));
}

TEST(CcittCodes, OfARowThatBeginsBlackBeginWithAWhiteRunOfNothing) {
    ExpectCode(WithoutEndOfBlock(FaxParameters(0, 5)), Rows("##...", 5), "00110101 11 1000");
}

TEST(CcittCodes, OfLongRunsAreMakeUpCodesAndATerminatingCode) {
    ExpectCode(WithoutEndOfBlock(FaxParameters(0, 1728)), Rows(std::string(1728, '.'), 1728),
               "010011011 00110101");
    ExpectCode(WithoutEndOfBlock(FaxParameters(0, 100)), Rows(std::string(100, '#'), 100),
               "00110101 0000001111 000011010100");
    ExpectCode(WithoutEndOfBlock(FaxParameters(0, 1855)), Rows(std::string(1855, '.'), 1855),
               "00000001000 00110100");
}

TEST(CcittCodes, RepeatTheLongestMakeUpCode) {
    ExpectCode(WithoutEndOfBlock(FaxParameters(0, 2623)), Rows(std::string(2623, '.'), 2623),
               "000000011111 00110100");
    // 2 x 2560 + 64 + 16.
    ExpectCode(WithoutEndOfBlock(FaxParameters(0, 5200)), Rows(std::string(5200, '#'), 5200),
               "00110101 000000011111 000000011111 0000001111 0000010111");
    // 2624 is one make-up code and 64, though 41 x 64.
    ExpectCode(WithoutEndOfBlock(FaxParameters(0, 2624)), Rows(std::string(2624, '.'), 2624),
               "000000011111 11011 00110101");
}

TEST(CcittCodes, OfARowLikeTheOneAboveAreOneBitAChange) {
    ExpectCode(FaxParameters(-1, 8), Rows("........", 8), "1 " + std::string(kEofb));
    // Horizontal: white 2, black 3; then the end of the row.
    ExpectCode(FaxParameters(-1, 8), Rows("..###...", 8) + Rows("..###...", 8),
               "001 0111 10 1 111 " + std::string(kEofb));
}

TEST(CcittCodes, TellTheWayToTheChangeAbove) {
    // Each change lies -3 to 3 pixels right of its like above.
    const std::string above = "......####..........";
    const std::pair<const char*, const char*> rows[] = {
        {"...#######..........", "0000010 1 1"}, {"....######..........", "000010 1 1"},
        {".....#####..........", "010 1 1"},     {"......####..........", "1 1 1"},
        {".......###..........", "011 1 1"},     {"........##..........", "000011 1 1"},
        {".........#..........", "0000011 1 1"}, {"......##............", "1 000010 1"},
    };
    for (const auto& [row, code] : rows) {
        // White 6 and black 4 make the first row.
        ExpectCode(WithoutEndOfBlock(FaxParameters(-1, 20)), Rows(above + row, 20),
                   "001 1110 011 1 " + std::string(code));
    }
}

TEST(CcittCodes, GoHorizontallyWhereTheChangeAboveIsFar) {
    // Black at 9, and below it at 5: white 5, black 1; then the pixel above is passed.
    ExpectCode(WithoutEndOfBlock(FaxParameters(-1, 20)),
               Rows(".........#..........", 20) + Rows(".....#..............", 20),
               "001 10100 010 1 001 1100 010 0001 1");
    // The other way round the pixel above is passed first, and 3 white pixels are left before 9.
    ExpectCode(WithoutEndOfBlock(FaxParameters(-1, 20)),
               Rows(".....#..............", 20) + Rows(".........#..........", 20),
               "001 1100 010 1 0001 001 1000 010 1");
}

TEST(CcittCodes, PassARunOfTheRowAboveThatIsNotContinued) {
    ExpectCode(WithoutEndOfBlock(FaxParameters(-1, 12)), Rows("....##......", 12) + Rows("............", 12),
               "001 1011 11 1 0001 1");
}

TEST(CcittCodes, CountAChangeAtTheVeryBeginningOfTheRowAbove) {
    ExpectCode(WithoutEndOfBlock(FaxParameters(-1, 8)), Rows("##......", 8) + Rows("##......", 8),
               "001 00110101 11 1 1 1 1");
}

TEST(CcittCodes, BeginEachRowWithAnEndOfLineWhereWanted) {
    FilterCcittParameters parameters = FaxParameters(0, 8);
    parameters.end_of_line = 1;
    ExpectCode(parameters, Rows("........", 8) + Rows("....####", 8),
               std::string(kEol) + "10011 " + kEol + "1011 011 " + kRtc);
}

TEST(CcittCodes, TellTheDimensionsOfARowBehindTheEndOfLine) {
    FilterCcittParameters parameters = FaxParameters(2, 8);
    parameters.end_of_line = 1;
    std::string end;
    for (int i = 0; i < 6; ++i) {
        end += "000000000001 1 ";
    }
    const std::string row = Rows("........", 8);
    ExpectCode(parameters, row + row + row,
               std::string(kEol) + "1 10011 " + kEol + "0 1 " + kEol + "1 10011 " + end);
}

TEST(CcittCodes, CountTheRowsOfAGroupWhereNoEndOfLineTells) {
    const std::string row = Rows("........", 8);
    ExpectCode(WithoutEndOfBlock(FaxParameters(3, 8)), row + row + row + row + row, "10011 1 1 10011 1");
    ExpectCode(WithoutEndOfBlock(FaxParameters(1, 8)), row + row, "10011 10011");
}

TEST(CcittCodes, BeginRowsAtBytesWhereWanted) {
    FilterCcittParameters parameters = FaxParameters(0, 8);
    parameters.encoded_byte_align = 1;
    const std::string rows = Rows("........", 8) + Rows("....####", 8);
    ExpectCode(parameters, rows, "10011 000 1011 011 0 " + std::string(kRtc));
    // An end-of-line code ends a byte then.
    parameters.end_of_line = 1;
    ExpectCode(parameters, rows,
               "0000 000000000001 10011 0000000 000000000001 1011 011 0 " + std::string(kRtc));
}

TEST(CcittCodes, TakeBlackForOneWhereWanted) {
    FilterCcittParameters parameters = WithoutEndOfBlock(FaxParameters(0, 8));
    parameters.black_is_1 = 1;
    // White 4, black 4.
    ExpectCode(parameters, "\x0F", "1011 011");
    ExpectCode(WithoutEndOfBlock(FaxParameters(0, 8)), "\xF0", "1011 011");
}

TEST(CcittCodes, OfNoRowsAreTheEndAlone) {
    ExpectCode(FaxParameters(0, 1728), "", kRtc);
    ExpectCode(FaxParameters(-1, 1728), "", kEofb);
    ExpectCode(WithoutEndOfBlock(FaxParameters(-1, 1728)), "", "");
}

TEST(CcittEncoder, FillsUpTheLastRowWithWhite) {
    EXPECT_EQ(DecodeFax(FaxParameters(0, 20), EncodeFax(FaxParameters(0, 20), "\x0F")),
              Whole("\x0F\xFF\xFF"));
    EXPECT_EQ(Decode(FILTER_DECODE_CCITTFAX, Encode(FILTER_ENCODE_CCITTFAX, "something")),
              Whole("something" + std::string(207, '\xFF')));
}

TEST(CcittEncoder, EncodesSeparateBitmapsAfterAnEnd) {
    std::mt19937 random(6);
    for (const FilterCcittParameters& parameters : AllForms(50)) {
        Writer writer;
        const auto encoder = EncoderTo(writer, {FILTER_ENCODE_CCITTFAX, &parameters});
        // Each of them ends in the middle of a group of rows and with black pixels.
        for (const std::size_t count : {3U, 0U, 6U, 7U}) {
            const std::string rows = SampleRows(50, count, random) + Rows(std::string(50, '#'), 50);
            writer.bytes.clear();
            EXPECT_TRUE(encoder->Encode(AsBytes(rows)));
            EXPECT_TRUE(encoder->End());
            EXPECT_EQ(writer.bytes, EncodeFax(parameters, rows)) << DictionaryOf(parameters);
        }
    }
}

TEST(CcittEncoder, IgnoresBitsBehindTheLastPixel) {
    for (const std::string_view row : {"\x55\x5F", "\x55\x50", "\x55\x5A"}) {
        EXPECT_EQ(EncodeFax(FaxParameters(-1, 12), row), EncodeFax(FaxParameters(-1, 12), "\x55\x5F"));
    }
}

TEST(CcittParameters, AreUnusableOutOfTheirRanges) {
    FilterCcittParameters noRows = FaxParameters(0, 8);
    noRows.rows = -1;
    for (const FilterCcittParameters& parameters :
         {FaxParameters(0, 0), FaxParameters(-1, -8), FaxParameters(0, FILTER_CCITT_MAXIMUM_COLUMNS + 1),
          noRows}) {
        Writer writer;
        EXPECT_EQ(EncoderTo(writer, {FILTER_ENCODE_CCITTFAX, &parameters}), nullptr);
        EXPECT_EQ(DecodeFax(parameters, Bits("10011")), (Decoded{"", Progress::kDamaged}));
    }
    ExpectCode(WithoutEndOfBlock(FaxParameters(-1, FILTER_CCITT_MAXIMUM_COLUMNS)),
               std::string(FILTER_CCITT_MAXIMUM_COLUMNS / 8 + 1, '\xFF'), "1");
}

TEST(CcittRoundTrip, GivesBackBitmapsOfEveryFormAndWidth) {
    std::mt19937 random(1);
    for (const int columns : {1, 2, 7, 8, 9, 31, 64, 65, 1728, 2560, 2624, 5300, 65534, 65535}) {
        for (const FilterCcittParameters& parameters : AllForms(columns)) {
            const std::string rows =
                SampleRows(static_cast<std::size_t>(columns), columns > 3000 ? 5 : 30, random);
            const Coding decoder{FILTER_DECODE_CCITTFAX, &parameters};
            const std::string plain = Decode(decoder, EncodeFax(parameters, rows)).bytes;
            // Bits behind the last pixel are white, which these bitmaps have them when black is 0 alone.
            EXPECT_EQ(EncodeFax(parameters, plain), EncodeFax(parameters, rows)) << DictionaryOf(parameters);
            if (parameters.black_is_1 == 0 || columns % 8 == 0) {
                EXPECT_EQ(plain == rows, true) << DictionaryOf(parameters);
            }
        }
    }
}

TEST(CcittRoundTrip, IsTheSameHoweverTheDataIsChunked) {
    std::mt19937 random(2);
    for (const FilterCcittParameters& parameters : AllForms(333)) {
        const std::string rows = SampleRows(333, 20, random);
        const std::string encoded = EncodeFax(parameters, rows);
        const Coding decoder{FILTER_DECODE_CCITTFAX, &parameters};
        EXPECT_EQ(EncodeFax(parameters, rows, 1 + random() % 60), encoded);
        EXPECT_EQ(Decode(decoder, encoded, 1), Decode(decoder, encoded));
        EXPECT_EQ(Decode(decoder, encoded, 1 + random() % 60), Decode(decoder, encoded));
    }
}

TEST(CcittDecoder, DeliversDataThatIsCutOffAnywhereAsFarAsItGoes) {
    std::mt19937 random(3);
    for (const FilterCcittParameters& parameters : AllForms(200)) {
        const std::string encoded = EncodeFax(parameters, SampleRows(200, 20, random));
        const std::string rows = DecodeFax(parameters, encoded).bytes;
        EXPECT_EQ(rows.size(), 500U);
        std::size_t before = 0;
        for (std::size_t length = 0; length <= encoded.size(); ++length) {
            const Decoded decoded = DecodeFax(parameters, encoded.substr(0, length));
            EXPECT_EQ(decoded.progress, Progress::kEnd);
            EXPECT_EQ(decoded.bytes, rows.substr(0, decoded.bytes.size())) << length;
            EXPECT_GE(decoded.bytes.size(), before);
            before = decoded.bytes.size();
        }
    }
}

TEST(CcittDecoder, StopsAfterItsRowsWhereNoBlockEnds) {
    FilterCcittParameters parameters = WithoutEndOfBlock(FaxParameters(-1, 8));
    parameters.rows = 3;
    EXPECT_EQ(DecodeFax(parameters, "\xFF\xFF"), Whole("\xFF\xFF\xFF"));
    parameters.rows = 0;
    EXPECT_EQ(DecodeFax(parameters, "\xFF\xFF"), Whole(std::string(16, '\xFF')));
    parameters.end_of_block = 1;
    parameters.rows = 3;
    EXPECT_EQ(DecodeFax(parameters, "\xFF\xFF"), Whole(std::string(16, '\xFF')));
}

TEST(CcittDecoder, StopsAtTheEndOfTheBlockEvenIfNoneIsPromised) {
    FilterCcittParameters parameters = WithoutEndOfBlock(FaxParameters(-1, 8));
    parameters.rows = 3;
    EXPECT_EQ(DecodeFax(parameters, Bits("1 " + std::string(kEofb) + " 1111")), Whole("\xFF"));
}

TEST(CcittDecoder, TakesEndOfLinesThatNobodyPromised) {
    const std::string rows = Rows("........", 8) + Rows("....####", 8);
    EXPECT_EQ(DecodeFax(FaxParameters(0, 8), Bits(std::string(kEol) + "10011 " + kEol + "1011 011 " + kRtc)),
              Whole(rows));
    // With zeros to fill the time.
    EXPECT_EQ(DecodeFax(FaxParameters(0, 8), Bits(std::string(kEol) + "10011 0000000000000000000000000" +
                                                  kEol + "1011 011 " + kRtc)),
              Whole(rows));
    EXPECT_EQ(DecodeFax(FaxParameters(-1, 8), Bits(std::string(kEol) + "1 " + kEol + "1 " + kEofb)),
              Whole("\xFF\xFF"));
}

TEST(CcittDecoder, TakesAlignedEndOfLinesThatNobodyPromised) {
    std::mt19937 random(5);
    for (const int k : {-1, 0, 4}) {
        FilterCcittParameters parameters = FaxParameters(k, 200);
        parameters.encoded_byte_align = 1;
        parameters.end_of_line = 1;
        const std::string rows = SampleRows(200, 30, random);
        const std::string encoded = EncodeFax(parameters, rows);
        parameters.end_of_line = 0;
        EXPECT_EQ(DecodeFax(parameters, encoded), Whole(rows)) << k;
        // The codes fill the bytes by themselves.
        parameters.encoded_byte_align = 0;
        EXPECT_EQ(DecodeFax(parameters, encoded), Whole(rows)) << k;
    }
}

TEST(CcittDecoder, NeedsNoEndOfLinesThatWerePromised) {
    FilterCcittParameters parameters = FaxParameters(0, 8);
    parameters.end_of_line = 1;
    EXPECT_EQ(DecodeFax(parameters, Bits("10011 1011 011 " + std::string(kRtc))),
              Whole(Rows("........", 8) + Rows("....####", 8)));
}

TEST(CcittDecoder, ReplacesADamagedRowByTheOneAbove) {
    const std::string sound = Rows("..######", 8);
    const char* const damage[] = {
        "0000000011 ",            // no code word
        "1011 ",                  // too few pixels
        "1011 0000111 ",          // too many: 4 and 12
        "00000001000 00110101 ",  // far too many
    };
    for (const char* const row : damage) {
        // White 2, black 6; the damaged row; white 3, black 5.
        const std::string data = std::string(kEol) + "0111 0010 " + kEol + row + kEol + "1000 0011 " + kRtc;
        EXPECT_EQ(DecodeFax(FaxParameters(0, 8), Bits(data)), Whole(sound + sound + Rows("...#####", 8)))
            << row;
    }
}

TEST(CcittDecoder, TakesADamagedFirstRowForWhite) {
    const std::string data = std::string(kEol) + "0000000011 " + kEol + "1000 0011 " + kRtc;
    EXPECT_EQ(DecodeFax(FaxParameters(0, 8), Bits(data)), Whole(Rows("...........#####", 8)));
}

TEST(CcittDecoder, SkipsWhatIsTooMuchInDataOfPromisedLines) {
    FilterCcittParameters parameters = FaxParameters(0, 8);
    parameters.end_of_line = 1;
    // A whole row, and a black run that nobody asked for.
    const std::string data = std::string(kEol) + "0111 0010 11 " + kEol + "1000 0011 " + kRtc;
    EXPECT_EQ(DecodeFax(parameters, Bits(data)), Whole(Rows("..######...#####", 8)));
}

TEST(CcittDecoder, RepeatsARowUntilOneIsCodedByItself) {
    FilterCcittParameters parameters = FaxParameters(4, 8);
    const std::string data = std::string(kEol) + "1 0111 0010 " +  // white 2, black 6
                             kEol + "0 0000000011 " +              // damage
                             kEol + "0 011 1 " +                   // against a row that is lost
                             kEol + "1 1000 0011 " +               // white 3, black 5
                             kEol + "0 1 1 " +                     // the same
                             kEol + "1 " + kEol + "1 " + kEol + "1 " + kEol + "1 " + kEol + "1 " + kEol +
                             "1 ";
    const std::string first = Rows("..######", 8);
    const std::string second = Rows("...#####", 8);
    EXPECT_EQ(DecodeFax(parameters, Bits(data)), Whole(first + first + first + second + second));
}

TEST(CcittDecoder, IsDamagedWhereThereIsNoWayOn) {
    const std::string rest = "1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1";
    // Group 4: a white row; white 16; then uncompressed mode.
    EXPECT_EQ(DecodeFax(FaxParameters(-1, 24), Bits("1 001 101010 010 0000001111 " + rest)),
              (Decoded{"\xFF\xFF\xFF\xFF\xFF", Progress::kDamaged}));
    // Black at 2, and below it, behind a white pixel and no black one, a change 3 left of it.
    EXPECT_EQ(DecodeFax(FaxParameters(-1, 8), Bits("001 0111 010 1 001 000111 0000110111 0000010 " + rest)),
              (Decoded{"\xDF", Progress::kDamaged}));
    // Group 3 without end-of-line codes.
    EXPECT_EQ(DecodeFax(FaxParameters(0, 8), Bits("10011 0000000011 " + rest)),
              (Decoded{"\xFF", Progress::kDamaged}));
}

TEST(CcittDecoder, TakesWhatIsNoCodeInTheLastBytesForPadding) {
    EXPECT_EQ(DecodeFax(FaxParameters(-1, 8), Bits("111 00000 00000000 00000000")), Whole("\xFF\xFF\xFF"));
    EXPECT_EQ(DecodeFax(FaxParameters(-1, 8), Bits("111 00000 00001101 00001010")), Whole("\xFF\xFF\xFF"));
}

TEST(CcittDecoder, ForgivesAnythingBehindItsRows) {
    FilterCcittParameters parameters = FaxParameters(-1, 8);
    parameters.rows = 3;
    EXPECT_EQ(DecodeFax(parameters, Bits("111 00000") + '\1' + "and anything else"), Whole("\xFF\xFF\xFF"));
}

TEST(CcittDecoder, KnowsZerosThatFillAByteFromAnEndOfLine) {
    // Behind seven zeros that fill the byte, a row of 1792 white pixels begins with seven more.
    FilterCcittParameters parameters = FaxParameters(0, 1792);
    parameters.encoded_byte_align = 1;
    const std::string first = "00000001000 00110101";
    const std::string row(224, '\xFF');
    EXPECT_EQ(DecodeFax(parameters, Bits(first + " 00000 " + first + " 00000 " + kRtc)), Whole(row + row));
}

TEST(CcittRoundTrip, TakesRowsOfManyChangesBesideBlankOnesOfAnyWidth) {
    // Were each row searched anew for each change of the other, this would take hours.
    constexpr std::size_t kBytes = FILTER_CCITT_MAXIMUM_COLUMNS / 8;
    const FilterCcittParameters parameters = FaxParameters(-1, 8 * kBytes);
    const std::string blank(kBytes, '\xFF');
    const std::string black(kBytes, '\0');
    const std::string lines(kBytes, '\xAA');
    const std::string rows = blank + lines + blank + black + lines + black + lines;
    EXPECT_EQ(Decode({FILTER_DECODE_CCITTFAX, &parameters}, EncodeFax(parameters, rows)) == Whole(rows),
              true);
}

TEST(CcittDecoder, ComesToAnEndOfNoiseInEveryForm) {
    std::mt19937 random(4);
    for (const int columns : {1, 16, 1728}) {
        for (const FilterCcittParameters& parameters : AllForms(columns)) {
            for (int round = 0; round < 5; ++round) {
                const std::string noise =
                    SampleBytes(round % 2 == 0 ? Kind::kNoise : Kind::kRuns, 300, random);
                EXPECT_NE(DecodeFax(parameters, noise).progress, Progress::kMore);
            }
        }
    }
}

}  // namespace
}  // namespace zorvan::filter
