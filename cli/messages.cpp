// Composes and prints messages.
#include "cli/messages.h"

#include <unistd.h>

#include "cli/printable_text.h"
#include "cli/system.h"

namespace zorvan::cli {

void Messages::Error(const std::string& text) {
    progress_.Clear();
    PrintMessage(text);
}

void Messages::Warning(const std::string& text) {
    if (!isQuiet_) {
        Error(text);
    }
}

void PrintMessage(const std::string& text) {
    const std::string line = "zorvan: " + OneLine(text) + "\n";
    // Nobody is left to be told when this fails.
    WriteAll(STDERR_FILENO, line.data(), line.size());
}

std::string ErrorText(const LibraryError& error) {
    std::string text = "error " + std::to_string(error.code);
    if (!error.text.empty()) {
        text += ": " + TextAsShown(error.text);
    }
    std::string place = error.offset == 0 ? "" : "at byte " + std::to_string(error.offset);
    if (!error.excerpt.empty()) {
        place += (place.empty() ? "" : ", ") + ("near " + QuotedBytes(error.excerpt));
    }
    return place.empty() ? text : text + " (" + place + ")";
}

std::string StatusText(int status, const LibraryError& first) {
    if (first.code == status) {
        return ErrorText(first);
    }
    const std::string text = "error " + std::to_string(status);
    return first.code == 0 ? text : text + "; the job's first error: " + ErrorText(first);
}

}  // namespace zorvan::cli
