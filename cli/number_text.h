// How the program writes numbers of points: the one place, and free of the locale.
#pragma once

#include <string>

namespace zorvan::cli {

// Fixed notation, rounded to a thousandth of a point, without trailing zeros; never "-0".
std::string NumberText(double value);

}  // namespace zorvan::cli
