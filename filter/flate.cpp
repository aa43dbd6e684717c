// The Flate codec: zlib's deflate and inflate between the caller's two functions.
#include "filter/flate.h"

#include <array>

#include <zlib.h>

namespace zorvan::filter {
namespace {

class FlateEncoder : public Encoder {
public:
    explicit FlateEncoder(const EncoderSetup& setup) : Encoder(setup) {}

    // False when memory is lacking.
    bool Open() {
        if (deflateInit(&stream_, Z_DEFAULT_COMPRESSION) != Z_OK) {
            return false;
        }
        opened_.reset(&stream_);
        return true;
    }

private:
    struct Close {
        void operator()(z_stream* stream) const { deflateEnd(stream); }
    };

    void EncodeBytes(Bytes bytes) override { Deflate(bytes, Z_NO_FLUSH); }

    // Everything up to here can be decoded from what was handed on.
    void EncodePending() override { Deflate({}, Z_SYNC_FLUSH); }

    void EncodeEnd() override {
        Deflate({}, Z_FINISH);
        deflateReset(&stream_);
    }

    // zlib has done what it was asked for when it leaves room behind.
    void Deflate(Bytes bytes, int flush) {
        // zlib's input is not const by an old habit; it is only read.
        stream_.next_in = const_cast<Bytef*>(bytes.data());
        stream_.avail_in = static_cast<uInt>(bytes.size());
        do {
            const std::span<std::uint8_t> space = Sink().Space();
            stream_.next_out = space.data();
            stream_.avail_out = static_cast<uInt>(space.size());
            deflate(&stream_, flush);
            Sink().Advance(space.size() - stream_.avail_out);
        } while (stream_.avail_out == 0 && !Sink().HasFailed());
    }

    z_stream stream_{};
    std::unique_ptr<z_stream, Close> opened_;
};

// The two header bytes are read here and the rest is inflated without zlib's frame. What the frame adds,
// check bits and an Adler sum, only tells that data was changed on its way. Real files have both of them
// wrong over sound data, and data that is not sound shows so itself.
class FlateDecoder : public Decoder {
public:
    explicit FlateDecoder(const DecoderSetup& setup) : Decoder(setup) {}

    // False when memory is lacking.
    bool Open() {
        if (inflateInit2(&stream_, -MAX_WBITS) != Z_OK) {
            return false;
        }
        opened_.reset(&stream_);
        return ReserveWindow();
    }

private:
    struct Close {
        void operator()(z_stream* stream) const { inflateEnd(stream); }
    };

    // inflate makes its window when it first needs it. Giving it a dictionary, which the reset then makes
    // it forget, has the window made now, so that memory cannot be lacking in the middle of a stream.
    bool ReserveWindow() {
        const Bytef anything = 0;
        return inflateSetDictionary(&stream_, &anything, 1) == Z_OK && inflateReset(&stream_) == Z_OK;
    }

    Progress DecodeBytes(Output& output) override {
        if (!headerPassed_) {
            const Progress progress = PassHeader();
            if (progress != Progress::kMore) {
                return progress;
            }
            headerPassed_ = true;
        }
        return Inflate(output);
    }

    // White space before the header is passed over: a PDF writer's surplus line end after "stream". No
    // header begins with such a byte, for its low four bits are the method, always 8.
    Progress PassHeader() {
        int method = Source().Get();
        while (method != ByteSource::kEnd && IsWhiteSpace(method)) {
            method = Source().Get();
        }
        const int flags = Source().Get();
        if (method == ByteSource::kEnd || flags == ByteSource::kEnd) {
            return Progress::kEnd;
        }
        const bool isDeflate = (static_cast<unsigned int>(method) & 0x8FU) == Z_DEFLATED;
        const bool hasDictionary = (static_cast<unsigned int>(flags) & 0x20U) != 0;
        return isDeflate && !hasDictionary ? Progress::kMore : Progress::kDamaged;
    }

    Progress Inflate(Output& output) {
        while (!output.IsFull()) {
            const Bytes block = Source().Block();
            const int result = InflateBlock(block, output);
            if (result == Z_STREAM_END || (result == Z_BUF_ERROR && block.empty())) {
                return Progress::kEnd;
            }
            if (result != Z_OK && result != Z_BUF_ERROR) {
                return Progress::kDamaged;
            }
        }
        return Progress::kMore;
    }

    int InflateBlock(Bytes block, Output& output) {
        const std::span<std::uint8_t> space = output.Space();
        // zlib's input is not const by an old habit; it is only read.
        stream_.next_in = const_cast<Bytef*>(block.data());
        stream_.avail_in = static_cast<uInt>(block.size());
        stream_.next_out = space.data();
        stream_.avail_out = static_cast<uInt>(space.size());
        const int result = inflate(&stream_, Z_NO_FLUSH);
        Source().Skip(block.size() - stream_.avail_in);
        output.Advance(space.size() - stream_.avail_out);
        return result;
    }

    bool headerPassed_ = false;
    z_stream stream_{};
    std::unique_ptr<z_stream, Close> opened_;
};

}  // namespace

std::unique_ptr<Encoder> NewFlateEncoder(const EncoderSetup& setup) {
    return NewOpenCodec<FlateEncoder>(setup);
}

std::unique_ptr<Decoder> NewFlateDecoder(const DecoderSetup& setup) {
    return NewOpenCodec<FlateDecoder>(setup);
}

}  // namespace zorvan::filter
