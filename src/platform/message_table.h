// The message texts, by the numbers that they have in both languages.
#pragma once

namespace zorvan {

/// The text in the user's language, UTF-8; empty when there is none of this number. It stays as it is until
/// the same number is asked for in another language.
const char* MessageOf(unsigned identifier);

}  // namespace zorvan
