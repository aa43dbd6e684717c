// DCT: agreement with Ghostscript's filters, sample by sample.
#include <gtest/gtest.h>

#include "tests/filter/codec_harness.h"
#include "tests/filter/ghostscript_harness.h"
#include "tests/filter/jpeg_files.h"

namespace zorvan::filter {
namespace {

class GhostscriptDct : public GhostscriptTest {
protected:
    void ExpectSameSamples(const JpegForm& form, const std::string& name) const {
        std::mt19937 random(1);
        const std::string file = MakeJpeg(form, SamplePicture(form, random));
        const Decoded decoded = Decode(FILTER_DECODE_DCT, file);
        EXPECT_EQ(decoded.progress, Progress::kEnd) << name;
        EXPECT_EQ(decoded.bytes.size(),
                  std::size_t{form.width} * form.height * static_cast<unsigned>(form.components));
        EXPECT_EQ(GhostscriptDecode({"/DCTDecode", file}) == decoded.bytes, true) << name;
    }
};

TEST_F(GhostscriptDct, DecodesTheSameSamplesOfEveryColorForm) {
    for (const int components : {1, 3, 4}) {
        for (const int transform : {-1, 0, 1, 2}) {
            JpegForm form{.width = 70, .height = 45, .components = components, .adobeTransform = transform};
            form.quality = 80;
            ExpectSameSamples(
                form, std::to_string(components) + " components, transform " + std::to_string(transform));
        }
    }
}

TEST_F(GhostscriptDct, DecodesTheSameSamplesOfEveryFileForm) {
    JpegForm form{.width = 70, .height = 45, .jfif = true, .quality = 85};
    ExpectSameSamples(form, "JFIF");
    form.jfif = false;
    form.names = "RGB";
    ExpectSameSamples(form, "components called R, G and B");
    form.names = {};
    form.sampling = 2;
    ExpectSameSamples(form, "coarse colours");
    form.restartInterval = 2;
    ExpectSameSamples(form, "restarts");
    form.progressive = true;
    ExpectSameSamples(form, "progressive");
    form.progressive = false;
    form.separateScans = true;
    ExpectSameSamples(form, "a scan for each component");
}

TEST_F(GhostscriptDct, ReadsWhatOurEncoderWrites) {
    std::mt19937 random(2);
    for (const unsigned int components : {1U, 3U, 4U}) {
        for (const unsigned int transform : {0U, 1U, 2U}) {
            const FilterDctParameters parameters{{61, 43, components, 90, transform}};
            const JpegForm form{.width = 61, .height = 43, .components = static_cast<int>(components)};
            const std::string file = Encode({FILTER_ENCODE_DCT, &parameters}, SamplePicture(form, random));
            const std::string samples = GhostscriptDecode({"/DCTDecode", file});
            EXPECT_EQ(samples.size(), std::size_t{61} * 43 * components);
            EXPECT_EQ(samples == Decode(FILTER_DECODE_DCT, file).bytes, true)
                << components << ' ' << transform;
        }
    }
}

}  // namespace
}  // namespace zorvan::filter
