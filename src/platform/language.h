// The language of the message texts.
#pragma once

namespace zorvan {

enum class Language { kEnglish, kChinese };

/// The language that the system selects for the user: Chinese (PRC) when the locale says so, else English.
Language UserLanguage();

}  // namespace zorvan
