// Places of a file whose text enters the output, as documents that have hostile texts in them.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "support/pdf_builder.h"

namespace zorvan::test {

/// In the templates, `@` is the text, a token of the file, and `#` the number of its object; `&` is the
/// number of a second object of its own.
struct Place {
    std::string name;
    std::function<PdfBuilder(const std::vector<std::string>& tokens)> document;
};

inline void PrintTo(const Place& place, std::ostream* out) {
    *out << place.name;
}

/// A content that is repeated for each text. The fonts /F and /C and the form /X are its resources.
Place InContent(const std::string& name, const std::string& content);

/// A dictionary or array for each text, which is a resource of this category, and the content that uses it.
Place InResource(const std::string& name, const std::string& category, const std::string& object,
                 const std::string& use);
/// The same for a stream.
Place InStream(const std::string& name, const std::string& category, const std::string& entries,
               const std::string& data, const std::string& use);
/// The same with a font whose second object is a stream.
Place InFont(const std::string& name, const std::string& font, const std::string& streamEntries = "",
             const std::string& streamData = "");
/// A form with this entry.
Place InForm(const std::string& name, const std::string& entry);
/// A page for each text.
Place InPage(const std::string& name, const std::string& entry);

/// Runs a document with all the texts, and, when something ran or failed, one with each of them alone.
void ExpectThatNothingRuns(const Place& place, const std::vector<std::string>& tokens);

/// True when a plain text of this place reaches the output.
bool IsWritten(const Place& place, const std::string& token, const std::string& text);

}  // namespace zorvan::test
