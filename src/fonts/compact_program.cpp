// Writing compact programs and reading their names.
#include "fonts/compact_program.h"

#include <algorithm>
#include <optional>

#include "fonts/font_program.h"
#include "ps/output.h"

namespace zorvan {
namespace {

/// An INDEX of the format: a count, the size of its offsets, the offsets, and the data, which offsets count
/// from 1.
class Index {
public:
    /// Nothing when it does not fit into the program.
    static std::optional<Index> At(Bytes program, std::size_t position) {
        if (position > program.size() || program.size() - position < kCountSize) {
            return std::nullopt;
        }
        Index index;
        const Bytes rest = program.subspan(position);
        index.count_ = rest[0] * std::size_t{256} + rest[1];
        if (index.count_ == 0) {
            return index;
        }
        index.offsetSize_ = rest.size() > kCountSize ? rest[kCountSize] : 0;
        const std::size_t data = kCountSize + 1 + (index.count_ + 1) * index.offsetSize_;
        if (index.offsetSize_ < 1 || index.offsetSize_ > 4 || data > rest.size()) {
            return std::nullopt;
        }
        index.offsets_ = rest.subspan(kCountSize + 1);
        index.data_ = rest.subspan(data);
        return index;
    }

    [[nodiscard]] std::size_t Count() const { return count_; }

    /// Empty for an entry whose offsets are in disorder or lead beyond the program.
    [[nodiscard]] Bytes Entry(std::size_t number) const {
        const std::size_t begin = Offset(number);
        const std::size_t end = Offset(number + 1);
        if (begin < 1 || end < begin || end - 1 > data_.size()) {
            return {};
        }
        return data_.subspan(begin - 1, end - begin);
    }

private:
    static constexpr std::size_t kCountSize = 2;

    [[nodiscard]] std::size_t Offset(std::size_t number) const {
        std::size_t offset = 0;
        for (const std::uint8_t byte : offsets_.subspan(number * offsetSize_, offsetSize_)) {
            offset = offset << 8U | byte;
        }
        return offset;
    }

    std::size_t count_ = 0;
    std::size_t offsetSize_ = 0;
    Bytes offsets_;
    Bytes data_;
};

bool IsPrintable(Bytes name) {
    return !name.empty() && std::ranges::all_of(name, [](auto byte) { return byte > 0x20 && byte < 0x7F; });
}

Status WriteHeader(std::size_t size) {
    const auto count = static_cast<std::uint32_t>(size);
    OutputPiece piece;
    piece.Append("/FontSetInit /ProcSet findresource begin\n")
        .Append("%%BeingData:")  // hosts look for the misspelt comment
        .AppendUnsigned(count)
        .Append(" Binary Bytes\n")
        .Append("/TestCFF ")
        .AppendUnsigned(count)
        .Append(" StartData\n");
    return piece.Write();
}

}  // namespace

std::string ReadCompactFontName(Bytes program) {
    constexpr std::size_t kHeader = 4;
    if (program.size() < kHeader) {
        return {};
    }
    const auto index = Index::At(program, kHeader);
    std::string name;
    for (std::size_t i = 0; index && i < index->Count(); ++i) {
        const Bytes entry = index->Entry(i);
        if (entry.size() < kCompactNameCapacity && IsPrintable(entry)) {
            name.assign(entry.begin(), entry.end());
        }
    }
    return name;
}

Status WriteCompactProgram(PdfObject value, PdfObject font, std::string& name) {
    FontProgram program;
    RETURN_IF_FAILED(program.Load(value, font));
    const Bytes data = program.Data();
    if (data.empty()) {
        return Status::kOk;
    }
    name = ReadCompactFontName(data);
    RETURN_IF_FAILED(WriteHeader(data.size()));
    RETURN_IF_FAILED(WriteOutput(data));
    return WriteOutput("\n%%EndData\n");
}

}  // namespace zorvan
