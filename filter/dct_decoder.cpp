// The DCT decoder: a JPEG file into rows of samples.
#include <algorithm>
#include <array>

#include <jerror.h>

#include "filter/dct.h"
#include "filter/dct_errors.h"

namespace zorvan::filter {
namespace {

// libjpeg keeps all coefficients of an image whose components come in several scans. No image of a page
// needs more than this; what does is made to exhaust its reader.
constexpr long kMemory = 256L << 20U;
// An image needs about ten scans, but each one costs the time of a whole image, however few its bytes are.
constexpr int kScans = 100;

// libjpeg's input: the blocks of the source, after a mark that was read already and before one that is never
// missing.
class DctSource {
public:
    explicit DctSource(ByteSource& source) : source_(source) {
        manager_.init_source = [](j_decompress_ptr) {};
        manager_.fill_input_buffer = [](j_decompress_ptr jpeg) {
            Of(jpeg).Fill();
            return boolean{TRUE};
        };
        manager_.skip_input_data = [](j_decompress_ptr jpeg, long count) {
            Of(jpeg).Skip(static_cast<std::size_t>(std::max(count, 0L)));
        };
        manager_.resync_to_restart = jpeg_resync_to_restart;
        manager_.term_source = [](j_decompress_ptr) {};
        Offer(kBegin);
    }

    jpeg_source_mgr* Manager() { return &manager_; }
    bool HasEnded() const { return ended_; }
    bool HasFailed() const { return failed_; }

private:
    static constexpr std::array<JOCTET, 2> kBegin = {0xFF, 0xD8};
    static constexpr std::array<JOCTET, 2> kEnd = {0xFF, JPEG_EOI};

    // The manager is the first field, so that its address is the record's.
    static DctSource& Of(j_decompress_ptr jpeg) { return *reinterpret_cast<DctSource*>(jpeg->src); }

    void Offer(Bytes bytes) {
        manager_.next_input_byte = bytes.data();
        manager_.bytes_in_buffer = bytes.size();
    }

    void Fill() {
        const Bytes block = ReadBlock();
        ended_ = block.empty();
        Offer(ended_ ? Bytes(kEnd) : block);
    }

    // What the read function throws stays here, since nothing may pass through libjpeg: the data ends then,
    // and the decoder says that it is damaged.
    Bytes ReadBlock() {
        if (ended_) {
            return {};
        }
        try {
            const Bytes block = source_.Block();
            source_.Skip(block.size());
            return block;
        } catch (...) {
            failed_ = true;
            return {};
        }
    }

    void Skip(std::size_t count) {
        while (count > manager_.bytes_in_buffer && !ended_) {
            count -= manager_.bytes_in_buffer;
            Fill();
        }
        count = std::min(count, manager_.bytes_in_buffer);
        manager_.next_input_byte += count;
        manager_.bytes_in_buffer -= count;
    }

    jpeg_source_mgr manager_{};
    ByteSource& source_;
    bool ended_ = false;
    bool failed_ = false;
};

// Samples leave as the file has them, once YCbCr is RGB and YCCK is CMYK. CMYK files that hold their colours
// inverted, as many do, are not told from others here: a PDF says so with its Decode array.
//
// libjpeg makes the best of damaged bits; what it cannot bear is damage. Rows behind the point where the
// data breaks off are not made up: in a file of one scan they are not delivered, and neither are those that
// share blocks with that point. In a file of several scans every row is there, if a coarse one.
class DctDecoder : public Decoder {
public:
    explicit DctDecoder(const DecoderSetup& setup) : Decoder(setup) {}

    // False when memory is lacking.
    bool Open() {
        jpeg_.err = errors_.Manager();
        opened_.reset(&jpeg_);
        jpeg_.err->emit_message = TakeMessage;
        jpeg_.client_data = this;
        monitor_.progress_monitor = CountScans;
        return errors_.Attempt([this] {
            jpeg_create_decompress(&jpeg_);
            jpeg_.mem->max_memory_to_use = kMemory;
            jpeg_.src = input_.Manager();
            jpeg_.progress = &monitor_;
        });
    }

private:
    struct Close {
        void operator()(j_decompress_ptr jpeg) const { jpeg_destroy_decompress(jpeg); }
    };

    static void TakeMessage(j_common_ptr codec, int /*level*/) {
        if (codec->err->msg_code == JWRN_HIT_MARKER) {
            auto& decoder = *static_cast<DctDecoder*>(codec->client_data);
            decoder.isBrokenOff_ = decoder.isBrokenOff_ || !decoder.IsBeforeRestart();
        }
    }

    // Data that breaks off at a marker goes on behind it if that is one for this purpose (or no marker of
    // this standard, which is passed over in search of one).
    bool IsBeforeRestart() const {
        constexpr int kFirstMarker = 0xC0;
        const int marker = jpeg_.unread_marker;
        const bool isRestart = marker >= JPEG_RST0 && marker <= JPEG_RST0 + 7;
        return jpeg_.restart_interval > 0 && (isRestart || marker < kFirstMarker);
    }

    static void CountScans(j_common_ptr codec) {
        if (static_cast<DctDecoder*>(codec->client_data)->jpeg_.input_scan_number > kScans) {
            codec->err->error_exit(codec);
        }
    }

    Progress DecodeBytes(Output& output) override {
        while (!output.IsFull()) {
            if (!row_.empty()) {
                row_ = row_.subspan(output.Put(row_));
            } else if (progress_ != Progress::kMore) {
                return progress_;
            } else {
                progress_ = begun_ ? ReadRow() : Begin();
            }
        }
        return Progress::kMore;
    }

    Progress Begin() {
        begun_ = true;
        const Progress progress = PassBegin();
        if (progress != Progress::kMore) {
            return progress;
        }
        if (!errors_.Attempt([this] { jpeg_read_header(&jpeg_, TRUE); })) {
            return Failure();
        }
        return ChooseColors() ? Start() : Progress::kDamaged;
    }

    // White space before the file is passed over: a PDF writer's surplus line end after "stream".
    Progress PassBegin() {
        int first = Source().Get();
        while (first != ByteSource::kEnd && IsWhiteSpace(first)) {
            first = Source().Get();
        }
        const int second = first == ByteSource::kEnd ? first : Source().Get();
        if (first == ByteSource::kEnd || (first == 0xFF && second == ByteSource::kEnd)) {
            return Progress::kEnd;
        }
        return first == 0xFF && second == 0xD8 ? Progress::kMore : Progress::kDamaged;
    }

    // Not by the names of the components or a JFIF marker, from which libjpeg guesses: DCTDecode knows the
    // Adobe marker only. Arithmetic coding is not for DCTDecode, and its data never shows that it broke off.
    bool ChooseColors() {
        constexpr std::array kPlain = {JCS_GRAYSCALE, JCS_UNKNOWN, JCS_RGB, JCS_CMYK};
        constexpr std::array kTransformed = {JCS_GRAYSCALE, JCS_UNKNOWN, JCS_YCbCr, JCS_YCCK};
        const auto components = static_cast<std::size_t>(jpeg_.num_components);
        if (components < 1 || components > kPlain.size() || jpeg_.arith_code != FALSE) {
            return false;
        }
        const bool transform = jpeg_.saw_Adobe_marker != FALSE ? jpeg_.Adobe_transform != 0 : components == 3;
        jpeg_.jpeg_color_space = (transform ? kTransformed : kPlain)[components - 1];
        jpeg_.out_color_space = kPlain[components - 1];
        return true;
    }

    Progress Start() {
        const bool started = errors_.Attempt([this] {
            jpeg_start_decompress(&jpeg_);
            const std::size_t size =
                std::size_t{jpeg_.output_width} * static_cast<unsigned>(jpeg_.output_components);
            void* const memory =
                jpeg_.mem->alloc_large(reinterpret_cast<j_common_ptr>(&jpeg_), JPOOL_IMAGE, size);
            buffer_ = {static_cast<JSAMPLE*>(memory), size};
        });
        return started ? Progress::kMore : Failure();
    }

    Progress ReadRow() {
        if (jpeg_.output_scanline == jpeg_.output_height) {
            return Progress::kEnd;
        }
        JSAMPROW row = buffer_.data();
        if (!errors_.Attempt([this, &row] { jpeg_read_scanlines(&jpeg_, &row, 1); })) {
            return Failure();
        }
        if (input_.HasFailed()) {
            return Progress::kDamaged;
        }
        if (isBrokenOff_ && jpeg_has_multiple_scans(&jpeg_) == FALSE) {
            return Progress::kEnd;
        }
        row_ = buffer_;
        return Progress::kMore;
    }

    // What libjpeg cannot bear in data that is cut off is that it is.
    Progress Failure() const {
        return input_.HasEnded() && !input_.HasFailed() ? Progress::kEnd : Progress::kDamaged;
    }

    bool begun_ = false;
    bool isBrokenOff_ = false;
    Progress progress_ = Progress::kMore;
    // libjpeg's, for one row, and what of it is not delivered yet.
    std::span<JSAMPLE> buffer_;
    Bytes row_;
    DctErrors errors_;
    DctSource input_{Source()};
    jpeg_progress_mgr monitor_{};
    jpeg_decompress_struct jpeg_{};
    std::unique_ptr<jpeg_decompress_struct, Close> opened_;
};

}  // namespace

std::unique_ptr<Decoder> NewDctDecoder(const DecoderSetup& setup) {
    return NewOpenCodec<DctDecoder>(setup);
}

}  // namespace zorvan::filter
