// CCITTFax: agreement with libtiff and with Ghostscript.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include <gtest/gtest.h>
#include <tiffio.h>
#include <unistd.h>

#include "tests/filter/codec_harness.h"
#include "tests/filter/fax_bitmaps.h"
#include "tests/filter/ghostscript_harness.h"

namespace zorvan::filter {
namespace {

// Group 3 in one dimension and in two, with end-of-line codes that end bytes and without, and Group 4.
struct TiffForm {
    std::uint16_t compression;
    std::uint32_t options;
    int k;
};

constexpr TiffForm kTiffForms[] = {
    {COMPRESSION_CCITTFAX3, 0, 0},
    {COMPRESSION_CCITTFAX3, GROUP3OPT_FILLBITS, 0},
    {COMPRESSION_CCITTFAX3, GROUP3OPT_2DENCODING, 4},
    {COMPRESSION_CCITTFAX3, GROUP3OPT_2DENCODING | GROUP3OPT_FILLBITS, 4},
    {COMPRESSION_CCITTFAX4, 0, -1},
};

FilterCcittParameters ParametersOf(const TiffForm& form, int columns) {
    FilterCcittParameters parameters = FaxParameters(form.k, columns);
    parameters.end_of_line = form.k >= 0 ? 1 : 0;
    parameters.encoded_byte_align = (form.options & GROUP3OPT_FILLBITS) != 0 ? 1 : 0;
    return parameters;
}

class Libtiff : public testing::Test {
protected:
    using File = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

    void TearDown() override { std::filesystem::remove(path_); }

    File Open(const char* mode) const { return {TIFFOpen(path_.c_str(), mode), TIFFClose}; }

    // A file for rows in which black is 0.
    File Create(const TiffForm& form, int columns, std::size_t rows) const {
        File file = Open("w");
        TIFFSetField(file.get(), TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(columns));
        TIFFSetField(file.get(), TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(rows));
        TIFFSetField(file.get(), TIFFTAG_ROWSPERSTRIP, static_cast<std::uint32_t>(rows));
        TIFFSetField(file.get(), TIFFTAG_BITSPERSAMPLE, 1);
        TIFFSetField(file.get(), TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(file.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
        TIFFSetField(file.get(), TIFFTAG_FILLORDER, FILLORDER_MSB2LSB);
        TIFFSetField(file.get(), TIFFTAG_COMPRESSION, form.compression);
        if (form.compression == COMPRESSION_CCITTFAX3) {
            TIFFSetField(file.get(), TIFFTAG_GROUP3OPTIONS, form.options);
        }
        return file;
    }

    std::string EncodeByTiff(const TiffForm& form, int columns, std::string rows) const {
        const std::size_t rowBytes = (static_cast<std::size_t>(columns) + 7) / 8;
        Invert(rows);
        TIFFWriteEncodedStrip(Create(form, columns, rows.size() / rowBytes).get(), 0, rows.data(),
                              static_cast<tmsize_t>(rows.size()));
        const File file = Open("r");
        std::string encoded(static_cast<std::size_t>(TIFFRawStripSize(file.get(), 0)), '\0');
        TIFFReadRawStrip(file.get(), 0, encoded.data(), static_cast<tmsize_t>(encoded.size()));
        return encoded;
    }

    std::string DecodeByTiff(const TiffForm& form, int columns, std::string encoded, std::size_t size) const {
        const std::size_t rowBytes = (static_cast<std::size_t>(columns) + 7) / 8;
        TIFFWriteRawStrip(Create(form, columns, size / rowBytes).get(), 0, encoded.data(),
                          static_cast<tmsize_t>(encoded.size()));
        std::string rows(size, '\0');
        TIFFReadEncodedStrip(Open("r").get(), 0, rows.data(), static_cast<tmsize_t>(size));
        Invert(rows);
        return rows;
    }

private:
    // For libtiff black is 1.
    static void Invert(std::string& bytes) {
        for (char& byte : bytes) {
            byte = static_cast<char>(~byte);
        }
    }

    const std::string path_ =
        (std::filesystem::temp_directory_path() / ("filter_tests." + std::to_string(getpid()) + ".tif"))
            .string();
};

constexpr int kColumns[] = {1, 7, 8, 64, 1728, 2487, 5300, 20000};

TEST_F(Libtiff, ReadsWhatOurEncoderWrites) {
    std::mt19937 random(1);
    for (const int columns : kColumns) {
        for (const TiffForm& form : kTiffForms) {
            const FilterCcittParameters parameters = ParametersOf(form, columns);
            const std::string rows = SampleRows(static_cast<std::size_t>(columns), 50, random);
            const std::string encoded = Encode({FILTER_ENCODE_CCITTFAX, &parameters}, rows);
            EXPECT_EQ(DecodeByTiff(form, columns, encoded, rows.size()), rows) << DictionaryOf(parameters);
        }
    }
}

TEST_F(Libtiff, WritesWhatOurDecoderReads) {
    std::mt19937 random(2);
    for (const int columns : kColumns) {
        for (const TiffForm& form : kTiffForms) {
            const FilterCcittParameters parameters = ParametersOf(form, columns);
            const std::string rows = SampleRows(static_cast<std::size_t>(columns), 50, random);
            const std::string encoded = EncodeByTiff(form, columns, rows);
            EXPECT_EQ(Decode({FILTER_DECODE_CCITTFAX, &parameters}, encoded), (Decoded{rows, Progress::kEnd}))
                << DictionaryOf(parameters);
        }
    }
}

TEST_F(Libtiff, KnowsTheSameCodeOfEveryRun) {
    constexpr int kWidest = 2700;
    std::string pixels;
    for (std::size_t run = 0; run <= kWidest; ++run) {
        pixels += std::string(run, '.') + std::string(kWidest - run, '#');
    }
    const std::string rows = Rows(pixels, kWidest);
    const FilterCcittParameters parameters = ParametersOf(kTiffForms[0], kWidest);
    const std::string encoded = Encode({FILTER_ENCODE_CCITTFAX, &parameters}, rows);
    EXPECT_EQ(DecodeByTiff(kTiffForms[0], kWidest, encoded, rows.size()) == rows, true);
    EXPECT_EQ(Decode({FILTER_DECODE_CCITTFAX, &parameters}, EncodeByTiff(kTiffForms[0], kWidest, rows)),
              (Decoded{rows, Progress::kEnd}));
}

class GhostscriptFax : public GhostscriptTest {
protected:
    // Every combination of parameters, some of narrow rows and some of wide ones.
    void MakeSamples() {
        std::mt19937 random(3);
        for (const int k : {-1, 0, 1, 4}) {
            for (int flags = 0; flags < 16; ++flags) {
                FilterCcittParameters parameters = FaxParameters(k, flags % 3 == 0 ? 3001 : 77 + flags);
                parameters.end_of_line = flags & 1;
                parameters.encoded_byte_align = flags >> 1 & 1;
                parameters.end_of_block = flags >> 2 & 1;
                parameters.black_is_1 = flags >> 3 & 1;
                parameters.rows = parameters.end_of_block == 0 ? 20 : 0;
                parameters_.push_back(parameters);
                rows_.push_back(SampleRows(static_cast<std::size_t>(parameters.columns), 20, random));
                encoded_.push_back(Encode({FILTER_ENCODE_CCITTFAX, &parameters}, rows_.back()));
            }
        }
    }

    std::vector<FilterCcittParameters> parameters_;
    std::vector<std::string> rows_;
    std::vector<std::string> encoded_;
};

TEST_F(GhostscriptFax, WritesWhatOurEncoderWrites) {
    MakeSamples();
    std::vector<FilterCall> calls;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        calls.push_back({DictionaryOf(parameters_[i]) + "/CCITTFaxEncode", rows_[i]});
    }
    const std::vector<std::string> encoded = GhostscriptEncodeEach(calls);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        EXPECT_EQ(encoded[i], encoded_[i]) << calls[i].filter;
    }
}

TEST_F(GhostscriptFax, ReadsTheSameAsOurDecoder) {
    MakeSamples();
    std::vector<FilterCall> calls;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        // Ghostscript looks beyond the last row before it delivers it.
        encoded_[i].append(2, '\0');
        calls.push_back({DictionaryOf(parameters_[i]) + "/CCITTFaxDecode", encoded_[i]});
    }
    const std::vector<std::string> decoded = GhostscriptDecodeEach(calls);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        EXPECT_EQ(Decode({FILTER_DECODE_CCITTFAX, &parameters_[i]}, encoded_[i]),
                  (Decoded{decoded[i], Progress::kEnd}))
            << calls[i].filter;
    }
}

}  // namespace
}  // namespace zorvan::filter
