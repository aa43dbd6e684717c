// The ASCIIHex codec: two hexadecimal digits a byte.
#include "filter/hex.h"

#include <array>
#include <string_view>

#include "filter/line_sink.h"

namespace zorvan::filter {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr char kEndOfData = '>';

class HexEncoder : public Encoder {
public:
    explicit HexEncoder(const EncoderSetup& setup) : Encoder(setup) {}

private:
    void EncodeBytes(Bytes bytes) override {
        for (const std::uint8_t byte : bytes) {
            const std::array pair = {kDigits[byte >> 4U], kDigits[byte & 0xFU]};
            lines_.Put({pair.data(), pair.size()});
        }
        Sink().HandOn();  // text that the caller writes next stands behind these digits
    }

    void EncodeEnd() override {
        lines_.PutWhole({&kEndOfData, 1});
        lines_.Restart();
    }

    LineSink lines_{Sink()};
};

constexpr std::uint8_t kNoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> MakeDigitValues() {
    std::array<std::uint8_t, 256> values{};
    values.fill(kNoDigit);
    for (std::uint8_t value = 0; value < 16; ++value) {
        const auto digit = static_cast<unsigned char>(kDigits[value]);
        values[digit] = value;
        values[digit | 0x20U] = value;  // the small letter; a decimal digit has this bit anyway
    }
    return values;
}

constexpr std::array<std::uint8_t, 256> kDigitValues = MakeDigitValues();

// Everything but digits and ">" is passed over, not white space alone: what strays into hexadecimal data
// (a "<" in front, a control character of some transmission) stands between the digits and takes nothing
// away from them, and a page with a doubtful byte serves a printer better than no page.
class HexDecoder : public Decoder {
public:
    explicit HexDecoder(const DecoderSetup& setup) : Decoder(setup) {}

private:
    Progress DecodeBytes(Output& output) override {
        while (!output.IsFull()) {
            DecodePairs(output);
            if (!output.IsFull() && !DecodeCharacter(output)) {
                return Progress::kEnd;
            }
        }
        return Progress::kMore;
    }

    // The fast way: pairs of digits with nothing between them, inside one block.
    void DecodePairs(Output& output) {
        if (high_ != kNoDigit) {
            return;
        }
        const Bytes block = Source().Block();
        const std::span<std::uint8_t> space = output.Space();
        std::size_t count = 0;
        for (; 2 * count + 1 < block.size() && count < space.size(); ++count) {
            const unsigned int high = kDigitValues[block[2 * count]];
            const unsigned int low = kDigitValues[block[2 * count + 1]];
            if ((high | low) > 0xFU) {
                break;
            }
            space[count] = static_cast<std::uint8_t>(high << 4U | low);
        }
        Source().Skip(2 * count);
        output.Advance(count);
    }

    // False at the end of the data. An odd digit before ">" stands for itself and a zero. One where the
    // data is cut off is half a byte, and no byte.
    bool DecodeCharacter(Output& output) {
        const int byte = Source().Get();
        if (byte == ByteSource::kEnd) {
            return false;
        }
        if (byte != kEndOfData) {
            TakeDigit(kDigitValues[static_cast<std::size_t>(byte)], output);
            return true;
        }
        if (high_ != kNoDigit) {
            TakeDigit(0, output);
        }
        return false;
    }

    void TakeDigit(std::uint8_t value, Output& output) {
        if (value == kNoDigit) {
            return;
        }
        if (high_ == kNoDigit) {
            high_ = value;
            return;
        }
        output.Put(static_cast<std::uint8_t>(high_ << 4U | value));
        high_ = kNoDigit;
    }

    std::uint8_t high_ = kNoDigit;
};

}  // namespace

std::unique_ptr<Encoder> NewHexEncoder(const EncoderSetup& setup) {
    return NewCodec<HexEncoder>(setup);
}

std::unique_ptr<Decoder> NewHexDecoder(const DecoderSetup& setup) {
    return NewCodec<HexDecoder>(setup);
}

}  // namespace zorvan::filter
