// Pixels and bits from text and from chance.
#include "tests/filter/fax_bitmaps.h"

#include <algorithm>

namespace zorvan::filter {
namespace {

std::string BlankRow(std::size_t columns) {
    return std::string(columns, '.');
}

std::string NoisyRow(std::size_t columns, std::mt19937& random) {
    std::string row(columns, '.');
    std::ranges::generate(row, [&] { return random() % 2 == 0 ? '.' : '#'; });
    return row;
}

// Lengths of all orders of magnitude.
std::string RowOfRuns(std::size_t columns, std::mt19937& random) {
    std::string row;
    for (char pixel = '.'; row.size() < columns; pixel = pixel == '.' ? '#' : '.') {
        row.append(random() % (std::size_t{1} << random() % 14U), pixel);
    }
    return row.substr(0, columns);
}

// Every change of the row above moves by up to four pixels; some are lost.
std::string SimilarRow(const std::string& above, std::mt19937& random) {
    std::string row(above.size(), '.');
    for (std::size_t column = 0; column < above.size(); ++column) {
        const std::size_t from = std::min(column + random() % 5, above.size() - 1);
        row[column] =
            column > 0 && random() % 8 != 0 && row[column - 1] == above[from] ? row[column - 1] : above[from];
    }
    return row;
}

std::string SampleRow(const std::string& above, std::mt19937& random) {
    switch (random() % 8) {
        case 0:
            return BlankRow(above.size());
        case 1:
            return std::string(above.size(), '#');
        case 2:
            return NoisyRow(above.size(), random);
        case 3:
            return above;
        case 4:
            return RowOfRuns(above.size(), random);
        default:
            return SimilarRow(above, random);
    }
}

}  // namespace

FilterCcittParameters FaxParameters(int k, int columns) {
    return {.k = k,
            .end_of_line = 0,
            .encoded_byte_align = 0,
            .columns = columns,
            .rows = 0,
            .end_of_block = 1,
            .black_is_1 = 0};
}

std::string DictionaryOf(const FilterCcittParameters& parameters) {
    const auto flag = [](int value) { return value != 0 ? " true" : " false"; };
    return "<< /K " + std::to_string(parameters.k) + " /EndOfLine" + flag(parameters.end_of_line) +
           " /EncodedByteAlign" + flag(parameters.encoded_byte_align) + " /Columns " +
           std::to_string(parameters.columns) + " /Rows " + std::to_string(parameters.rows) + " /EndOfBlock" +
           flag(parameters.end_of_block) + " /BlackIs1" + flag(parameters.black_is_1) + " >> ";
}

std::string Rows(std::string_view pixels, std::size_t columns) {
    std::string bytes;
    for (; !pixels.empty(); pixels.remove_prefix(columns)) {
        std::string digits(pixels.substr(0, columns));
        digits.resize((columns + 7) / 8 * 8, '.');
        std::ranges::replace(digits, '.', '1');
        std::ranges::replace(digits, '#', '0');
        bytes += Bits(digits);
    }
    return bytes;
}

std::string SampleRows(std::size_t columns, std::size_t rows, std::mt19937& random) {
    std::string row = BlankRow(columns);
    std::string pixels;
    for (std::size_t i = 0; i < rows; ++i) {
        row = SampleRow(row, random);
        pixels += row;
    }
    return Rows(pixels, columns);
}

std::string Bits(std::string_view digits) {
    std::string bytes;
    unsigned int count = 0;
    for (const char digit : digits) {
        if (digit == ' ') {
            continue;
        }
        if (count++ % 8 == 0) {
            bytes += '\0';
        }
        const unsigned int bit = digit == '1' ? 0x80U >> (count - 1) % 8 : 0;
        bytes.back() = static_cast<char>(static_cast<unsigned char>(bytes.back()) | bit);
    }
    return bytes;
}

}  // namespace zorvan::filter
