// Bitmaps for the tests of CCITTFax.
#ifndef TESTS_FILTER_FAX_BITMAPS_H
#define TESTS_FILTER_FAX_BITMAPS_H

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "zorvan/filter.h"

namespace zorvan::filter {

// The defaults of the format.
FilterCcittParameters FaxParameters(int k, int columns);

// As a PostScript dictionary.
std::string DictionaryOf(const FilterCcittParameters& parameters);

// Rows of pixels, '.' white and '#' black, as bytes in which black is 0.
std::string Rows(std::string_view pixels, std::size_t columns);

// Rows of every sort: blank, black, noise, runs of any length, and changes near those of the row above.
std::string SampleRows(std::size_t columns, std::size_t rows, std::mt19937& random);

// The bytes of binary digits; spaces count for nothing, and zeros fill the last byte.
std::string Bits(std::string_view digits);

}  // namespace zorvan::filter

#endif
