// Drives codecs over strings: for the tests, the fuzz targets and the benchmarks.
#ifndef TESTS_FILTER_CODEC_HARNESS_H
#define TESTS_FILTER_CODEC_HARNESS_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <string_view>

#include "filter/codec.h"

namespace zorvan::filter {

// A filter code, with its parameter block where it has one.
struct Coding {
    constexpr Coding(unsigned int filterCode, const void* block = nullptr)
        : code(filterCode), parameters(block) {}
    constexpr operator unsigned int() const { return code; }

    unsigned int code;
    const void* parameters;
};

// Every codec that gives back what it was given, byte for byte, by its name in PostScript.
struct CodecPair {
    const char* name;
    Coding encoder;
    Coding decoder;
    // The parameters in PostScript.
    const char* dictionary = "";
};

// Rows of eight pixels: data of any length is made of them.
constexpr FilterCcittParameters kByteRows = {.k = 0,
                                             .end_of_line = 0,
                                             .encoded_byte_align = 0,
                                             .columns = 8,
                                             .rows = 0,
                                             .end_of_block = 1,
                                             .black_is_1 = 0};

constexpr CodecPair kCodecs[] = {
    {"Flate", FILTER_ENCODE_FLATE, FILTER_DECODE_FLATE},
    {"LZW", FILTER_ENCODE_LZW, FILTER_DECODE_LZW},
    {"RunLength", FILTER_ENCODE_RUNLENGTH, FILTER_DECODE_RUNLENGTH},
    {"ASCII85", FILTER_ENCODE_ASCII85, FILTER_DECODE_ASCII85},
    {"ASCIIHex", FILTER_ENCODE_ASCIIHEX, FILTER_DECODE_ASCIIHEX},
    {"CCITTFax",
     {FILTER_ENCODE_CCITTFAX, &kByteRows},
     {FILTER_DECODE_CCITTFAX, &kByteRows},
     "<< /Columns 8 >> "},
};

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

// What an encoder writes to. From call number `accepted` on, counted from 0, bytes are refused.
struct Writer {
    static int ZORVAN_CALL Write(const int* slot, const void* bytes, unsigned int count,
                                 unsigned int* written);

    int slot = 0;
    std::size_t accepted = kNoLimit;
    std::size_t calls = 0;
    bool wasGivenNothing = false;
    std::string bytes;
};

// What a decoder reads from.
struct Reader {
    static int ZORVAN_CALL Read(const int* slot, void* buffer, unsigned int wanted, unsigned int* read);

    int slot = 0;
    std::string_view rest;
};

Bytes AsBytes(std::string_view text);

std::unique_ptr<Encoder> EncoderTo(Writer& writer, Coding coding);
std::unique_ptr<Decoder> DecoderFrom(Reader& reader, Coding coding);

// All of `data` as one piece, given to the encoder in chunks of so many bytes.
std::string Encode(Coding coding, std::string_view data, std::size_t chunk = kNoLimit);

struct Decoded {
    std::string bytes;
    Progress progress = Progress::kMore;
    bool operator==(const Decoded&) const = default;
};
// For the tests' messages.
std::ostream& operator<<(std::ostream& stream, const Decoded& decoded);
std::ostream& operator<<(std::ostream& stream, const CodecPair& codec);

// All that comes out before the end or the damage, fetched in chunks of so many bytes into buffers of just
// that size; what comes out beyond `limit` is not fetched.
Decoded Decode(Coding coding, std::string_view data, std::size_t chunk = 65536, std::size_t limit = kNoLimit);
// The same from a decoder that is there already.
Decoded DecodeRest(Decoder& decoder, std::size_t chunk, std::size_t limit = kNoLimit);

// Bytes of every degree of order, from all zeros to noise.
enum class Kind { kZeros, kRuns, kText, kNoise };
constexpr Kind kKinds[] = {Kind::kZeros, Kind::kRuns, Kind::kText, Kind::kNoise};
std::string SampleBytes(Kind kind, std::size_t size, std::mt19937& random);

}  // namespace zorvan::filter

#endif
