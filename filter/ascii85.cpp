// The ASCII85 codec: four bytes as five digits of base 85, "!" to "u"; "z" for four zero bytes.
#include "filter/ascii85.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <utility>

#include "filter/line_sink.h"

namespace zorvan::filter {
namespace {

constexpr unsigned int kBase = 85;
constexpr char kFirstDigit = '!';
constexpr char kFourZeros = 'z';
constexpr std::string_view kEndOfData = "~>";
constexpr std::size_t kGroupBytes = 4;
constexpr std::size_t kGroupDigits = 5;

std::array<char, kGroupDigits> DigitsOf(std::uint32_t value) {
    std::array<char, kGroupDigits> digits{};
    for (std::size_t i = kGroupDigits; i-- > 0; value /= kBase) {
        digits[i] = static_cast<char>(static_cast<unsigned int>(kFirstDigit) + value % kBase);
    }
    return digits;
}

// Writes no "<~": the caller does, where the data is a PostScript string.
class Ascii85Encoder : public Encoder {
public:
    explicit Ascii85Encoder(const EncoderSetup& setup) : Encoder(setup) {}

private:
    void EncodeBytes(Bytes bytes) override {
        for (const std::uint8_t byte : bytes) {
            value_ = value_ << 8U | byte;
            if (++count_ == kGroupBytes) {
                PutGroup();
            }
        }
    }

    void EncodeEnd() override {
        if (count_ > 0) {
            // A group that is not full is padded with zeros and has one digit more than bytes; never a "z".
            const std::array digits = DigitsOf(value_ << 8U * (kGroupBytes - count_));
            lines_.Put({digits.data(), count_ + 1});
        }
        BeginGroup();
        lines_.PutWhole(kEndOfData);
        lines_.Restart();
    }

    void PutGroup() {
        if (value_ == 0) {
            lines_.Put({&kFourZeros, 1});
        } else {
            const std::array digits = DigitsOf(value_);
            lines_.Put({digits.data(), digits.size()});
        }
        BeginGroup();
    }

    void BeginGroup() {
        value_ = 0;
        count_ = 0;
    }

    LineSink lines_{Sink()};
    std::uint32_t value_ = 0;
    unsigned int count_ = 0;
};

constexpr bool IsDigit(int byte) {
    return byte >= kFirstDigit && byte < kFirstDigit + static_cast<int>(kBase);
}

constexpr std::uint64_t WithDigit(std::uint64_t value, int byte) {
    return value * kBase + static_cast<unsigned int>(byte - kFirstDigit);
}

// A character that is none of ASCII85's is damage, unlike in ASCIIHex: five digits mix into four bytes, so
// that one that was spoilt or lost turns all that follows into noise, which nobody wants on paper. "~" ends
// the data even without ">", since nothing else can follow it.
class Ascii85Decoder : public Decoder {
public:
    explicit Ascii85Decoder(const DecoderSetup& setup) : Decoder(setup) {}

private:
    // How far the search for the "<~" that may stand before the data has come.
    enum class Opening { kExpected, kHalfSeen, kPassed };

    Progress DecodeBytes(Output& output) override {
        for (;;) {
            pending_ = pending_.subspan(output.Put(pending_));
            if (!pending_.empty()) {
                return Progress::kMore;
            }
            if (ended_) {
                return Progress::kEnd;
            }
            DecodeGroups(output);
            if (output.IsFull()) {
                return Progress::kMore;
            }
            if (!Take(Source().Get())) {
                return Progress::kDamaged;
            }
        }
    }

    // The fast way: groups of five digits with nothing between them, inside one block.
    void DecodeGroups(Output& output) {
        if (count_ != 0 || opening_ != Opening::kPassed) {
            return;
        }
        while (output.Space().size() >= kGroupBytes && DecodeGroup(Source().Block())) {
            output.Put(group_);
            Source().Skip(kGroupDigits);
        }
    }

    // False, with nothing taken, when the block does not begin with a plain group.
    bool DecodeGroup(Bytes block) {
        if (block.size() < kGroupDigits) {
            return false;
        }
        std::uint64_t value = 0;
        bool areDigits = true;
        for (const std::uint8_t byte : block.first<kGroupDigits>()) {
            areDigits = areDigits && IsDigit(byte);
            value = WithDigit(value, byte);
        }
        if (!areDigits || value > kLargest) {
            return false;
        }
        StoreGroup(value);
        return true;
    }

    // The careful way, a character at a time. False when the data is damaged.
    bool Take(int byte) {
        if (byte != ByteSource::kEnd && IsWhiteSpace(byte)) {
            return true;
        }
        if (opening_ != Opening::kPassed && TakeOpening(byte)) {
            return true;
        }
        if (byte == ByteSource::kEnd || byte == kEndOfData.front()) {
            ended_ = true;
            return EndGroup();
        }
        if (byte == kFourZeros && count_ == 0) {
            StoreGroup(0);
            pending_ = group_;
            return true;
        }
        return IsDigit(byte) && TakeDigit(byte);
    }

    // True when `byte` belongs to the opening, as far as can be told yet: "<" is a digit, too.
    bool TakeOpening(int byte) {
        if (opening_ == Opening::kExpected && byte == '<') {
            opening_ = Opening::kHalfSeen;
            return true;
        }
        const bool isHalfSeen = opening_ == Opening::kHalfSeen;
        opening_ = Opening::kPassed;
        if (isHalfSeen && byte != '~') {
            TakeDigit('<');
        }
        return isHalfSeen && byte == '~';
    }

    bool TakeDigit(int byte) {
        value_ = WithDigit(value_, byte);
        if (++count_ < kGroupDigits) {
            return true;
        }
        count_ = 0;
        const std::uint64_t value = std::exchange(value_, 0);
        StoreGroup(value);
        pending_ = group_;
        return value <= kLargest;
    }

    // A last group of n digits holds n - 1 bytes: the digits that lack count as the highest one. So does a
    // group that was cut short: its bytes may then be one too high, which cannot be told from a complete
    // group whose "~>" is missing, the case that real files have. A single digit holds nothing.
    bool EndGroup() {
        if (count_ < 2) {
            return true;
        }
        if (Padded(0) > kLargest) {
            return false;
        }
        StoreGroup(std::min(Padded(kBase - 1), kLargest));
        pending_ = Bytes(group_).first(count_ - 1);
        return true;
    }

    std::uint64_t Padded(unsigned int digit) const {
        std::uint64_t value = value_;
        for (std::size_t i = count_; i < kGroupDigits; ++i) {
            value = value * kBase + digit;
        }
        return value;
    }

    void StoreGroup(std::uint64_t value) {
        for (std::size_t i = kGroupBytes; i-- > 0; value >>= 8U) {
            group_[i] = static_cast<std::uint8_t>(value & 0xFFU);
        }
    }

    static constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max();

    Opening opening_ = Opening::kExpected;
    bool ended_ = false;
    std::uint64_t value_ = 0;
    std::size_t count_ = 0;
    std::array<std::uint8_t, kGroupBytes> group_{};
    Bytes pending_;
};

}  // namespace

std::unique_ptr<Encoder> NewAscii85Encoder(const EncoderSetup& setup) {
    return NewCodec<Ascii85Encoder>(setup);
}

std::unique_ptr<Decoder> NewAscii85Decoder(const DecoderSetup& setup) {
    return NewCodec<Ascii85Decoder>(setup);
}

}  // namespace zorvan::filter
