// The LZW codec: codes of 9 to 12 bits, the width changing one code early, as PDF and PostScript default to.
#include "filter/lzw.h"

#include <array>

namespace zorvan::filter {
namespace {

constexpr unsigned int kClear = 256;
constexpr unsigned int kEndOfData = 257;
constexpr unsigned int kFirstString = 258;
constexpr unsigned int kShortest = 9;
constexpr unsigned int kLongest = 12;
constexpr unsigned int kTableSize = 1U << kLongest;

class LzwEncoder : public Encoder {
public:
    explicit LzwEncoder(const EncoderSetup& setup) : Encoder(setup) {}

private:
    static constexpr unsigned int kNone = kTableSize;
    static constexpr unsigned int kHashBits = 13;

    void EncodeBytes(Bytes bytes) override {
        if (bytes.empty()) {
            return;
        }
        Begin();
        for (const std::uint8_t byte : bytes) {
            Extend(byte);
        }
    }

    void EncodeEnd() override {
        Begin();
        if (string_ != kNone) {
            PutString();
        }
        PutCode(kEndOfData);
        // Zero bits fill the last byte.
        PutBits(0, (8 - bitCount_) % 8);
        string_ = kNone;
        width_ = kShortest;
        begun_ = false;
    }

    void Begin() {
        if (!begun_) {
            begun_ = true;
            Clear();
        }
    }

    void Clear() {
        PutCode(kClear);
        strings_.fill(0);
        next_ = kFirstString;
        width_ = kShortest;
    }

    // The string so far grows by a byte; if the table does not hold it then, it is put out as it was.
    void Extend(std::uint8_t byte) {
        if (string_ == kNone) {
            string_ = byte;
            return;
        }
        const std::uint32_t key = string_ << 8U | byte;
        std::uint32_t& place = Find(key);
        if (place != 0) {
            string_ = place % kTableSize;
            return;
        }
        place = key << kLongest | next_;
        PutString();
        string_ = byte;
    }

    // The place of a string in the hash table: 20 bits of prefix code and byte above its own code. Zero
    // where there is none. The table is never more than half full.
    std::uint32_t& Find(std::uint32_t key) {
        std::size_t place = key * 2654435761U >> (32 - kHashBits);
        while (strings_[place] != 0 && strings_[place] >> kLongest != key) {
            place = (place + 1) % strings_.size();
        }
        return strings_[place];
    }

    // The decoder takes on an entry with every code, the last one before the end included. The table is
    // cleared one entry before it is full, while its codes can be told from those of 13 bits.
    void PutString() {
        PutCode(string_);
        ++next_;
        if (next_ == kTableSize - 1) {
            Clear();
        } else if (next_ == 1U << width_) {
            ++width_;
        }
    }

    void PutCode(unsigned int code) { PutBits(code, width_); }

    void PutBits(unsigned int bits, unsigned int count) {
        bits_ = bits_ << count | bits;
        bitCount_ += count;
        while (bitCount_ >= 8) {
            bitCount_ -= 8;
            Sink().Put(static_cast<std::uint8_t>(bits_ >> bitCount_ & 0xFFU));
        }
    }

    bool begun_ = false;
    unsigned int string_ = kNone;
    unsigned int next_ = kFirstString;
    unsigned int width_ = kShortest;
    unsigned int bitCount_ = 0;
    std::uint32_t bits_ = 0;
    std::array<std::uint32_t, 1U << kHashBits> strings_{};
};

// A clear code at the start may lack. A table that is full stays as it is, with codes of 12 bits, until
// the next clear code. Only a code that stands for nothing yet is damage.
class LzwDecoder : public Decoder {
public:
    explicit LzwDecoder(const DecoderSetup& setup) : Decoder(setup) {
        for (unsigned int code = 0; code < kClear; ++code) {
            const auto byte = static_cast<std::uint8_t>(code);
            strings_[code] = {0, 1, byte, byte};
        }
    }

private:
    static constexpr unsigned int kNone = kTableSize;

    // A string is another one and a byte more.
    struct String {
        std::uint16_t prefix;
        std::uint16_t length;
        std::uint8_t first;
        std::uint8_t last;
    };

    Progress DecodeBytes(Output& output) override {
        pending_ = pending_.subspan(output.Put(pending_));
        while (!output.IsFull()) {
            const unsigned int code = GetCode();
            if (code == kEndOfData) {
                return Progress::kEnd;
            }
            if (code == kClear) {
                previous_ = kNone;
                next_ = kFirstString;
                width_ = kShortest;
            } else if (!TakeString(code, output)) {
                return Progress::kDamaged;
            }
        }
        return Progress::kMore;
    }

    // The end of the input is the end of the data; the bits of a code that was cut off are nothing.
    unsigned int GetCode() {
        while (bitCount_ < width_) {
            const int byte = Source().Get();
            if (byte == ByteSource::kEnd) {
                return kEndOfData;
            }
            bits_ = bits_ << 8U | static_cast<std::uint32_t>(byte);
            bitCount_ += 8;
        }
        bitCount_ -= width_;
        return bits_ >> bitCount_ & ((1U << width_) - 1);
    }

    // False when `code` stands for no string.
    bool TakeString(unsigned int code, Output& output) {
        const bool extendsPrevious = previous_ != kNone && next_ < kTableSize;
        if (code > next_ || (code == next_ && !extendsPrevious)) {
            return false;
        }
        if (extendsPrevious) {
            AddString(strings_[code == next_ ? previous_ : code].first);
        }
        previous_ = code;
        PutString(strings_[code], output);
        return true;
    }

    void AddString(std::uint8_t last) {
        const String& prefix = strings_[previous_];
        const auto length = static_cast<std::uint16_t>(prefix.length + 1);
        strings_[next_] = {static_cast<std::uint16_t>(previous_), length, prefix.first, last};
        ++next_;
        if (next_ + 1 == 1U << width_ && width_ < kLongest) {
            ++width_;
        }
    }

    // Strings are found from their ends, so one that does not fit is kept aside and given out in pieces.
    void PutString(const String& string, Output& output) {
        if (output.Space().size() >= string.length) {
            Spell(string, output.Space());
            output.Advance(string.length);
            return;
        }
        Spell(string, kept_);
        pending_ = Bytes(kept_).first(string.length);
        pending_ = pending_.subspan(output.Put(pending_));
    }

    void Spell(String string, std::span<std::uint8_t> place) const {
        for (std::size_t i = string.length; i-- > 0; string = strings_[string.prefix]) {
            place[i] = string.last;
        }
    }

    unsigned int previous_ = kNone;
    unsigned int next_ = kFirstString;
    unsigned int width_ = kShortest;
    unsigned int bitCount_ = 0;
    std::uint32_t bits_ = 0;
    Bytes pending_;
    std::array<String, kTableSize> strings_{};
    // The longest string has one byte more for every entry that the table can take.
    std::array<std::uint8_t, kTableSize> kept_;
};

}  // namespace

std::unique_ptr<Encoder> NewLzwEncoder(const EncoderSetup& setup) {
    return NewCodec<LzwEncoder>(setup);
}

std::unique_ptr<Decoder> NewLzwDecoder(const DecoderSetup& setup) {
    return NewCodec<LzwDecoder>(setup);
}

}  // namespace zorvan::filter
