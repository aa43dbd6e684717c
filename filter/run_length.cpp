// The RunLength codec: a length byte, then so many bytes as they are, or one byte to repeat.
#include "filter/run_length.h"

#include <algorithm>
#include <array>

namespace zorvan::filter {
namespace {

constexpr std::size_t kLongest = 128;
constexpr std::uint8_t kEndOfData = 128;
// Two equal bytes save nothing among bytes that are stored as they are.
constexpr std::size_t kWorthwhileRun = 3;

class RunLengthEncoder : public Encoder {
public:
    explicit RunLengthEncoder(const EncoderSetup& setup) : Encoder(setup) {}

private:
    void EncodeBytes(Bytes bytes) override {
        for (const std::uint8_t byte : bytes) {
            if (byte != runByte_ || runLength_ == kLongest) {
                CloseRun();
                runByte_ = byte;
            }
            ++runLength_;
        }
    }

    void EncodePending() override {
        CloseRun();
        PutLiterals();
    }

    void EncodeEnd() override {
        EncodePending();
        Sink().Put(kEndOfData);
    }

    void CloseRun() {
        if (runLength_ >= kWorthwhileRun) {
            PutLiterals();
            Sink().Put(static_cast<std::uint8_t>(257 - runLength_));
            Sink().Put(runByte_);
        } else {
            for (std::size_t i = 0; i < runLength_; ++i) {
                AddLiteral(runByte_);
            }
        }
        runLength_ = 0;
    }

    void AddLiteral(std::uint8_t byte) {
        if (literalCount_ == kLongest) {
            PutLiterals();
        }
        literals_[literalCount_++] = byte;
    }

    void PutLiterals() {
        if (literalCount_ > 0) {
            Sink().Put(static_cast<std::uint8_t>(literalCount_ - 1));
            Sink().Put(Bytes(literals_).first(literalCount_));
            literalCount_ = 0;
        }
    }

    std::uint8_t runByte_ = 0;
    std::size_t runLength_ = 0;
    std::size_t literalCount_ = 0;
    std::array<std::uint8_t, kLongest> literals_;
};

// Any bytes are RunLength data, so that nothing here is ever damaged: they only end early.
class RunLengthDecoder : public Decoder {
public:
    explicit RunLengthDecoder(const DecoderSetup& setup) : Decoder(setup) {}

private:
    Progress DecodeBytes(Output& output) override {
        while (!output.IsFull()) {
            if (repeats_ == 0 && literals_ == 0 && !BeginPacket()) {
                return Progress::kEnd;
            }
            repeats_ -= output.Fill(repeated_, repeats_);
            if (literals_ > 0 && !CopyLiterals(output)) {
                return Progress::kEnd;
            }
        }
        return Progress::kMore;
    }

    bool BeginPacket() {
        const int length = Source().Get();
        if (length == ByteSource::kEnd || length == kEndOfData) {
            return false;
        }
        if (length < kEndOfData) {
            literals_ = static_cast<std::size_t>(length) + 1;
            return true;
        }
        const int byte = Source().Get();
        repeats_ = byte == ByteSource::kEnd ? 0 : static_cast<std::size_t>(257 - length);
        repeated_ = static_cast<std::uint8_t>(byte);
        return byte != ByteSource::kEnd;
    }

    bool CopyLiterals(Output& output) {
        const Bytes block = Source().Block();
        const std::size_t copied = output.Put(block.first(std::min(block.size(), literals_)));
        Source().Skip(copied);
        literals_ -= copied;
        return !block.empty();
    }

    std::uint8_t repeated_ = 0;
    std::size_t repeats_ = 0;
    std::size_t literals_ = 0;
};

}  // namespace

std::unique_ptr<Encoder> NewRunLengthEncoder(const EncoderSetup& setup) {
    return NewCodec<RunLengthEncoder>(setup);
}

std::unique_ptr<Decoder> NewRunLengthDecoder(const DecoderSetup& setup) {
    return NewCodec<RunLengthDecoder>(setup);
}

}  // namespace zorvan::filter
