// What parses bytes, on every beginning of the fuzz targets' seeds: each ends where readable memory ends.
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "api/current_job.h"
#include "bounds/seeds.h"
#include "filter/codec_table.h"
#include "fonts/compact_program.h"
#include "fonts/true_type_parser.h"
#include "fonts/type1_program.h"
#include "fuzz/ccitt_parameters.h"
#include "pdf/lexer.h"
#include "support/guarded_buffer.h"
#include "support/job_fixture.h"

namespace zorvan::test {
namespace {

using filter::Output;
using filter::Progress;

class GuardPage : public JobTest {
protected:
    /// Has each beginning of each seed parsed at the edge.
    template <class Parse>
    void ParsePrefixes(const std::string& target, Parse parse) {
        ASSERT_TRUE(guarded_.Ready());
        const int seeds =
            ForEachPrefix(target, [&](std::string_view prefix) { parse(guarded_.Put(prefix)); });
        EXPECT_GT(seeds, 0) << target;
    }

    /// Scans to the end or to the first error.
    static void Scan(Bytes bytes) {
        std::uint32_t status = lex::kNothing;
        while ((status & lex::kEnd) == 0 && !lex::IsError(status)) {
            PdfObject token;
            std::uint32_t consumed = 0;
            status = ScanToken(bytes, CurrentNames(), token, consumed);
            ASSERT_LE(consumed, bytes.size());
            const bool isStray = (status & lex::kToken) != 0 && token == MakeOperator(0);
            bytes = bytes.subspan(isStray ? consumed + 1 : consumed);
            FreeObject(token);
        }
    }

private:
    static constexpr std::size_t kLongestSeed = 1U << 16U;
    GuardedBuffer guarded_{kLongestSeed};
};

TEST_F(GuardPage, IsNotTouchedByTheLexer) {
    ParsePrefixes("pdf_lexer", Scan);
    ParsePrefixes("pdf_object", Scan);
}

TEST_F(GuardPage, IsNotTouchedByTheReaderOfTrueTypeFiles) {
    using Source = TrueTypeParser::GlyphMapSource;
    ParsePrefixes("font_true_type", [](Bytes seed) {
        const Bytes file = seed.subspan(seed.empty() ? 0 : 1);  // the first byte chooses the source
        for (const Source source : {Source::kCmap, Source::kIdentity}) {
            TrueTypeParser parser;
            static_cast<void>(parser.Parse(file, source));
        }
    });
}

TEST_F(GuardPage, IsNotTouchedByTheReaderOfCompactPrograms) {
    ParsePrefixes("font_compact", [](Bytes program) { static_cast<void>(ReadCompactFontName(program)); });
}

TEST_F(GuardPage, IsNotTouchedByTheReaderOfType1Programs) {
    ParsePrefixes("font_type1", [](Bytes seed) {
        constexpr std::size_t kLengths = 8;
        const Bytes program = seed.subspan(std::min(seed.size(), kLengths));
        for (const std::size_t length : {std::size_t{0}, program.size() / 2, program.size(), SIZE_MAX}) {
            const Type1Parts parts(program, length, length);
            EXPECT_LE(parts.Clear().size(), program.size());
        }
    });
}

TEST(GuardedBufferDeathTest, EndsAProgramThatReadsBehindIt) {
    const GuardedBuffer guarded(3);
    const volatile std::uint8_t* const bytes = guarded.Put("abc").data();
    EXPECT_EQ(bytes[2], 'c');
    EXPECT_DEATH(static_cast<void>(bytes[3]), "");
}

/// What a decoder reads from. It fills what it does not deliver of a block with `garbage`.
struct DirtyReader {
    static int ZORVAN_CALL Read(const int* slot, void* buffer, unsigned int wanted, unsigned int* read) {
        auto& reader = *reinterpret_cast<DirtyReader*>(const_cast<int*>(slot));
        const std::size_t count = std::min<std::size_t>(wanted, reader.rest.size());
        auto* const bytes = static_cast<std::uint8_t*>(buffer);
        std::copy_n(reader.rest.begin(), count, bytes);
        std::fill(bytes + count, bytes + wanted, reader.garbage);
        reader.rest = reader.rest.subspan(count);
        *read = static_cast<unsigned int>(count);
        return count == wanted ? 1 : 0;
    }

    int slot = 0;  // the first field, so that its address is the record's
    Bytes rest;
    std::uint8_t garbage = 0;
};

/// The beginning of what a decoder makes of the bytes, in buffers that end at a guard page, too.
std::string Decode(unsigned int code, const void* parameters, Bytes bytes, std::uint8_t garbage) {
    constexpr std::size_t kEnough = 20000;
    constexpr std::size_t kBuffer = 777;
    const GuardedBuffer buffer(kBuffer);
    DirtyReader reader{0, bytes, garbage};
    const auto decoder = filter::NewDecoder(code, {parameters, &reader.slot, DirtyReader::Read});
    std::string decoded;
    Progress progress = Progress::kMore;
    while (progress == Progress::kMore && decoded.size() < kEnough) {
        Output output(buffer.Last(kBuffer));
        progress = decoder->Decode(output);
        decoded.append(reinterpret_cast<const char*>(buffer.Last(kBuffer).data()), output.Count());
    }
    return decoded + std::to_string(static_cast<int>(progress));
}

/// What stands behind the input changes nothing.
void ExpectBounded(unsigned int code, const void* parameters, Bytes bytes) {
    EXPECT_EQ(Decode(code, parameters, bytes, 0), Decode(code, parameters, bytes, 0xFF)) << bytes.size();
}

TEST_F(GuardPage, IsNotTouchedByAnyDecoderWithoutParameters) {
    const std::pair<const char*, unsigned int> decoders[] = {
        {"filter_flate", FILTER_DECODE_FLATE},         {"filter_lzw", FILTER_DECODE_LZW},
        {"filter_runlength", FILTER_DECODE_RUNLENGTH}, {"filter_ascii85", FILTER_DECODE_ASCII85},
        {"filter_asciihex", FILTER_DECODE_ASCIIHEX},   {"filter_dct", FILTER_DECODE_DCT}};
    for (const auto& [target, code] : decoders) {
        ParsePrefixes(target, [code = code](Bytes bytes) { ExpectBounded(code, nullptr, bytes); });
    }
}

TEST_F(GuardPage, IsNotTouchedByTheFaxDecoder) {
    ParsePrefixes("filter_ccitt", [](Bytes seed) {
        if (seed.size() >= fuzz::kCcittHeader) {
            const FilterCcittParameters parameters = fuzz::CcittParameters(seed.data());
            ExpectBounded(FILTER_DECODE_CCITTFAX, &parameters, seed.subspan(fuzz::kCcittHeader));
        }
    });
}

}  // namespace
}  // namespace zorvan::test
