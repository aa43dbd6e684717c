// Memory comes at the creation of a codec or never.
#include <array>
#include <cstdlib>
#include <new>

#include <gtest/gtest.h>
#include <zlib.h>

#include "filter/codec_table.h"
#include "tests/filter/codec_harness.h"

namespace {

// Whose memory is lacking, if any.
enum class Lacking { kNothing, kOurs, kZlibs };
Lacking lacking = Lacking::kNothing;
std::size_t allocations = 0;

void* Allocate(std::size_t size, Lacking whenLacking) {
    ++allocations;
    return lacking == whenLacking ? nullptr : std::malloc(size);
}

voidpf AllocateForZlib(voidpf, uInt items, uInt size) {
    return Allocate(std::size_t{items} * size, Lacking::kZlibs);
}

void FreeForZlib(voidpf, voidpf memory) {
    std::free(memory);
}

}  // namespace

// The linker calls these instead of zlib's functions, and zlib's by the other names (its option --wrap).
extern "C" {
decltype(deflateInit_) __real_deflateInit_, __wrap_deflateInit_;
decltype(inflateInit2_) __real_inflateInit2_, __wrap_inflateInit2_;
}

int __wrap_deflateInit_(z_streamp stream, int level, const char* version, int size) {
    stream->zalloc = AllocateForZlib;
    stream->zfree = FreeForZlib;
    return __real_deflateInit_(stream, level, version, size);
}

int __wrap_inflateInit2_(z_streamp stream, int windowBits, const char* version, int size) {
    stream->zalloc = AllocateForZlib;
    stream->zfree = FreeForZlib;
    return __real_inflateInit2_(stream, windowBits, version, size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size, Lacking::kOurs);
}

void* operator new(std::size_t size) {
    if (void* const memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}

// Not inlined: g++ would see new and free meet and warn of what is meant here.
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace zorvan::filter {
namespace {

// Whether the two codecs of a name are there.
std::array<bool, 2> MakeCodecs(const CodecPair& codec, Lacking memory) {
    Writer writer;
    Reader reader;
    lacking = memory;
    const auto encoder = EncoderTo(writer, codec.encoder);
    const auto decoder = DecoderFrom(reader, codec.decoder);
    lacking = Lacking::kNothing;
    return {encoder != nullptr, decoder != nullptr};
}

TEST(Memory, LackingAtCreationMakesNoCodec) {
    const std::array none = {false, false};
    for (const CodecPair& codec : kCodecs) {
        EXPECT_EQ(MakeCodecs(codec, Lacking::kOurs), none) << codec.name;
    }
    EXPECT_EQ(MakeCodecs(kCodecs[0], Lacking::kZlibs), none);
    constexpr FilterDctParameters kPixel{{1, 1, 1}};
    EXPECT_EQ(MakeCodecs({"DCT", {FILTER_ENCODE_DCT, &kPixel}, FILTER_DECODE_DCT}, Lacking::kOurs), none);
}

int ZORVAN_CALL CountBytes(const int* slot, const void* bytes, unsigned int count, unsigned int* written) {
    static_cast<void>(slot);
    static_cast<void>(bytes);
    *written = count;
    return 1;
}

TEST(Memory, IsNotAskedForWhileEncodingOrDecoding) {
    std::mt19937 random(1);
    const std::string data = SampleBytes(Kind::kText, 300000, random);
    for (const CodecPair& codec : kCodecs) {
        const std::string encoded = Encode(codec.encoder, data);
        Reader reader{0, encoded};
        const auto encoder = NewEncoder(codec.encoder, {codec.encoder.parameters, nullptr, CountBytes});
        const auto decoder = DecoderFrom(reader, codec.decoder);
        std::array<std::uint8_t, 1000> buffer{};
        const std::size_t before = allocations;
        EXPECT_TRUE(encoder->Encode(AsBytes(data)) && encoder->End());
        Progress progress = Progress::kMore;
        while (progress == Progress::kMore) {
            Output output(buffer);
            progress = decoder->Decode(output);
        }
        EXPECT_EQ(allocations, before) << codec.name;
        EXPECT_EQ(progress, Progress::kEnd);
    }
}

}  // namespace
}  // namespace zorvan::filter
