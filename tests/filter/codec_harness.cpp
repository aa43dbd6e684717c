// The strings behind the codecs' two functions.
#include "tests/filter/codec_harness.h"

#include <algorithm>
#include <memory>

#include "filter/codec_table.h"

namespace zorvan::filter {

// The slot is the first field of the record, so that its address is the record's.
int ZORVAN_CALL Writer::Write(const int* slot, const void* bytes, unsigned int count, unsigned int* written) {
    auto& writer = *reinterpret_cast<Writer*>(const_cast<int*>(slot));
    *written = 0;
    writer.wasGivenNothing = writer.wasGivenNothing || count == 0;
    if (writer.calls++ >= writer.accepted) {
        return 0;
    }
    writer.bytes.append(static_cast<const char*>(bytes), count);
    *written = count;
    return 1;
}

int ZORVAN_CALL Reader::Read(const int* slot, void* buffer, unsigned int wanted, unsigned int* read) {
    auto& reader = *reinterpret_cast<Reader*>(const_cast<int*>(slot));
    const std::size_t count = std::min<std::size_t>(wanted, reader.rest.size());
    std::copy_n(reader.rest.data(), count, static_cast<char*>(buffer));
    reader.rest.remove_prefix(count);
    *read = static_cast<unsigned int>(count);
    return count == wanted ? 1 : 0;
}

Bytes AsBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::unique_ptr<Encoder> EncoderTo(Writer& writer, Coding coding) {
    return NewEncoder(coding.code, {coding.parameters, &writer.slot, Writer::Write});
}

std::unique_ptr<Decoder> DecoderFrom(Reader& reader, Coding coding) {
    return NewDecoder(coding.code, {coding.parameters, &reader.slot, Reader::Read});
}

std::string Encode(Coding coding, std::string_view data, std::size_t chunk) {
    Writer writer;
    const auto encoder = EncoderTo(writer, coding);
    for (std::size_t at = 0; at < data.size(); at += std::min(chunk, data.size())) {
        encoder->Encode(AsBytes(data.substr(at, chunk)));
    }
    encoder->End();
    return writer.bytes;
}

Decoded Decode(Coding coding, std::string_view data, std::size_t chunk, std::size_t limit) {
    Reader reader{0, data};
    return DecodeRest(*DecoderFrom(reader, coding), chunk, limit);
}

Decoded DecodeRest(Decoder& decoder, std::size_t chunk, std::size_t limit) {
    const auto buffer = std::make_unique<std::uint8_t[]>(chunk);
    Decoded decoded;
    while (decoded.progress == Progress::kMore && decoded.bytes.size() < limit) {
        Output output({buffer.get(), std::min(chunk, limit - decoded.bytes.size())});
        decoded.progress = decoder.Decode(output);
        decoded.bytes.append(reinterpret_cast<const char*>(buffer.get()), output.Count());
    }
    return decoded;
}

std::ostream& operator<<(std::ostream& stream, const Decoded& decoded) {
    stream << decoded.bytes.size() << " bytes:";
    for (const char byte : decoded.bytes.substr(0, 40)) {
        stream << ' ' << +static_cast<unsigned char>(byte);
    }
    return stream << " ..., then " << static_cast<int>(decoded.progress);
}

std::ostream& operator<<(std::ostream& stream, const CodecPair& codec) {
    return stream << codec.name;
}

std::string SampleBytes(Kind kind, std::size_t size, std::mt19937& random) {
    std::string bytes(size, '\0');
    char last = 0;
    for (char& byte : bytes) {
        const auto drawn = static_cast<unsigned int>(random());
        if (kind == Kind::kRuns && drawn % 16 != 0) {
            byte = last;
        } else if (kind == Kind::kText) {
            byte = "etaoin shr\n"[drawn % 11];
        } else if (kind != Kind::kZeros) {
            byte = static_cast<char>(drawn >> 8U);
        }
        last = byte;
    }
    return bytes;
}

}  // namespace zorvan::filter
