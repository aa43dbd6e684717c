// How fast the codecs are, in bytes of plain data a second, and zlib alone beside Flate.
#include <array>
#include <memory>

#include <benchmark/benchmark.h>
#include <zlib.h>

#include "filter/codec_table.h"
#include "tests/filter/codec_harness.h"

namespace zorvan::filter {
namespace {

constexpr std::size_t kSize = 4U << 20U;
constexpr std::size_t kBuffer = 65536;

std::string Sample(const benchmark::State& state) {
    std::mt19937 random(1);
    return SampleBytes(kKinds[state.range(1)], kSize, random);
}

const CodecPair& CodecOf(const benchmark::State& state) {
    return kCodecs[state.range(0)];
}

void Report(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kSize));
}

int ZORVAN_CALL DropBytes(const int* /*slot*/, const void* bytes, unsigned int count, unsigned int* written) {
    benchmark::DoNotOptimize(bytes);
    *written = count;
    return 1;
}

void EncodeAll(benchmark::State& state) {
    const std::string data = Sample(state);
    for (auto _ : state) {
        const auto encoder =
            NewEncoder(CodecOf(state).encoder, {CodecOf(state).encoder.parameters, nullptr, DropBytes});
        encoder->Encode(AsBytes(data));
        encoder->End();
    }
    Report(state);
    state.SetLabel(CodecOf(state).name);
}

void DecodeAll(benchmark::State& state) {
    const std::string encoded = Encode(CodecOf(state).encoder, Sample(state));
    const auto buffer = std::make_unique<std::array<std::uint8_t, kBuffer>>();
    for (auto _ : state) {
        Reader reader{0, encoded};
        const auto decoder = DecoderFrom(reader, CodecOf(state).decoder);
        Progress progress = Progress::kMore;
        while (progress == Progress::kMore) {
            Output output(*buffer);
            progress = decoder->Decode(output);
        }
    }
    Report(state);
    state.SetLabel(CodecOf(state).name);
}

// What Flate is measured against. The first argument is there for the sample's sake.
void InflateByZlibAlone(benchmark::State& state) {
    std::string encoded = Encode(FILTER_ENCODE_FLATE, Sample(state));
    const auto buffer = std::make_unique<std::array<std::uint8_t, kBuffer>>();
    for (auto _ : state) {
        z_stream stream{};
        inflateInit(&stream);
        stream.next_in = reinterpret_cast<Bytef*>(encoded.data());
        stream.avail_in = static_cast<uInt>(encoded.size());
        int result = Z_OK;
        while (result == Z_OK) {
            stream.next_out = buffer->data();
            stream.avail_out = kBuffer;
            result = inflate(&stream, Z_NO_FLUSH);
        }
        inflateEnd(&stream);
    }
    Report(state);
}

// Codecs in the order of kCodecs, kinds of data (runs, text, noise) in that of kKinds.
BENCHMARK(EncodeAll)->ArgsProduct({{0, 1, 2, 3, 4}, {1, 2, 3}});
BENCHMARK(DecodeAll)->ArgsProduct({{0, 1, 2, 3, 4}, {1, 2, 3}});
BENCHMARK(InflateByZlibAlone)->ArgsProduct({{0}, {1, 2, 3}});

}  // namespace
}  // namespace zorvan::filter

BENCHMARK_MAIN();
