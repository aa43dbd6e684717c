// Writing to an output file, and how it fails.
#pragma once

#include <functional>
#include <string>

#include "cli/failure.h"
#include "cli/output_file.h"

namespace zorvan::cli {

inline bool Write(OutputFile& output, const std::string& text) {
    return output.Write(text.data(), text.size());
}

inline ExitCode CodeOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Failure& failure) {
        return failure.Code();
    }
    return ExitCode::kDone;
}

}  // namespace zorvan::cli
