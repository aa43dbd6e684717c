// The DCT encoder: rows of samples into a JPEG file, coded as they come.
#include <algorithm>

#include "filter/dct.h"
#include "filter/dct_errors.h"

namespace zorvan::filter {
namespace {

struct DctParameters {
    std::size_t RowBytes() const { return std::size_t{width} * components; }

    unsigned int width;
    unsigned int height;
    unsigned int components;
    unsigned int quality;
    bool transform;
};

bool AreUsable(const FilterDctParameters& block) {
    const unsigned int components = block.words[FILTER_DCT_COMPONENTS];
    const unsigned int width = block.words[FILTER_DCT_WIDTH];
    const unsigned int height = block.words[FILTER_DCT_HEIGHT];
    return width >= 1 && width <= JPEG_MAX_DIMENSION && height >= 1 && height <= JPEG_MAX_DIMENSION &&
           (components == 1 || components == 3 || components == 4) &&
           block.words[FILTER_DCT_QUALITY] <= 100 && block.words[FILTER_DCT_TRANSFORM] <= 2;
}

DctParameters ReadParameters(const FilterDctParameters& block) {
    constexpr unsigned int kQuality = 75;
    const unsigned int components = block.words[FILTER_DCT_COMPONENTS];
    const unsigned int quality = block.words[FILTER_DCT_QUALITY];
    const unsigned int transform = block.words[FILTER_DCT_TRANSFORM];
    return {block.words[FILTER_DCT_WIDTH], block.words[FILTER_DCT_HEIGHT], components,
            quality == 0 ? kQuality : quality, transform == 0 ? components == 3 : transform == 2};
}

class DctEncoder : public Encoder {
public:
    DctEncoder(const EncoderSetup& setup, const DctParameters& parameters)
        : Encoder(setup), parameters_(parameters), row_(new (std::nothrow) JSAMPLE[parameters.RowBytes()]) {}

    // False when memory is lacking.
    bool Open() {
        jpeg_.err = errors_.Manager();
        opened_.reset(&jpeg_);
        return row_ != nullptr && errors_.Attempt([this] {
            jpeg_create_compress(&jpeg_);
            SetUp();
        });
    }

private:
    struct Close {
        void operator()(j_compress_ptr jpeg) const { jpeg_destroy_compress(jpeg); }
    };

    // libjpeg's destination: the room in the sink. What is written there must be reported to the sink before
    // the sink is used otherwise.
    struct Destination {
        explicit Destination(ByteSink& target) : sink(target) {
            manager.init_destination = [](j_compress_ptr) {};
            manager.empty_output_buffer = [](j_compress_ptr jpeg) {
                Of(jpeg).Turn();
                return boolean{TRUE};
            };
            manager.term_destination = [](j_compress_ptr) {};
        }

        static Destination& Of(j_compress_ptr jpeg) { return *reinterpret_cast<Destination*>(jpeg->dest); }

        void Take() {
            space = sink.Space();
            manager.next_output_byte = space.data();
            manager.free_in_buffer = space.size();
        }
        void Give() { sink.Advance(space.size() - manager.free_in_buffer); }

        // The room is full. What the write function throws stays here: nothing may pass through libjpeg, and
        // the sink has failed by then, so that the encoder says so.
        void Turn() {
            sink.Advance(space.size());
            try {
                Take();
            } catch (...) {
                Take();
            }
        }

        // The first field, so that its address is the record's.
        jpeg_destination_mgr manager{};
        ByteSink& sink;
        std::span<std::uint8_t> space;
    };

    // Every component is as fine as the others: what is printed bears no coarser colours unasked.
    void SetUp() {
        const bool isGray = parameters_.components == 1;
        const bool isRgb = parameters_.components == 3;
        jpeg_.dest = &destination_.manager;
        jpeg_.image_width = parameters_.width;
        jpeg_.image_height = parameters_.height;
        jpeg_.input_components = static_cast<int>(parameters_.components);
        jpeg_.in_color_space = isGray ? JCS_GRAYSCALE : isRgb ? JCS_RGB : JCS_CMYK;
        jpeg_set_defaults(&jpeg_);
        if (!isGray) {
            const J_COLOR_SPACE transformed = isRgb ? JCS_YCbCr : JCS_YCCK;
            jpeg_set_colorspace(&jpeg_, parameters_.transform ? transformed : jpeg_.in_color_space);
        }
        jpeg_set_quality(&jpeg_, static_cast<int>(parameters_.quality), TRUE);
        for (jpeg_component_info& component : std::span(jpeg_.comp_info, parameters_.components)) {
            component.h_samp_factor = 1;
            component.v_samp_factor = 1;
        }
    }

    void EncodeBytes(Bytes bytes) override {
        while (!bytes.empty() && !Sink().HasFailed()) {
            const std::size_t count = std::min(bytes.size(), parameters_.RowBytes() - fill_);
            std::copy_n(bytes.begin(), count, row_.get() + fill_);
            bytes = bytes.subspan(count);
            fill_ += count;
            if (fill_ == parameters_.RowBytes()) {
                EncodeRow();
            }
        }
    }

    void EncodeRow() {
        JSAMPROW row = row_.get();
        Run([this, &row] {
            if (!begun_) {
                jpeg_start_compress(&jpeg_, TRUE);
                begun_ = true;
            }
            // No row is taken beyond the last one.
            if (jpeg_write_scanlines(&jpeg_, &row, 1) == 0) {
                Sink().Fail();
            }
        });
        fill_ = 0;
    }

    void EncodeEnd() override {
        if (!begun_ && fill_ == 0) {
            return;
        }
        if (!begun_ || fill_ > 0 || jpeg_.next_scanline < jpeg_.image_height) {
            Sink().Fail();
            return;
        }
        Run([this] { jpeg_finish_compress(&jpeg_); });
        begun_ = false;
    }

    template <typename Call>
    void Run(Call call) {
        destination_.Take();
        if (!errors_.Attempt(call)) {
            Sink().Fail();
        }
        destination_.Give();
    }

    const DctParameters parameters_;
    std::unique_ptr<JSAMPLE[]> row_;
    std::size_t fill_ = 0;
    bool begun_ = false;
    DctErrors errors_;
    Destination destination_{Sink()};
    jpeg_compress_struct jpeg_{};
    std::unique_ptr<jpeg_compress_struct, Close> opened_;
};

}  // namespace

std::unique_ptr<Encoder> NewDctEncoder(const EncoderSetup& setup) {
    const auto* const block = static_cast<const FilterDctParameters*>(setup.parameters);
    if (block == nullptr || !AreUsable(*block)) {
        return nullptr;
    }
    return NewOpenCodec<DctEncoder>(setup, ReadParameters(*block));
}

}  // namespace zorvan::filter
