// What POSIX systems give beside what all do: the user's language by the environment, files without a name.
#include <gtest/gtest.h>

#include "pdf/describe.h"
#include "platform/language.h"
#include "platform/mapped_file.h"
#include "support/environment_setting.h"
#include "support/host.h"

namespace zorvan::test {
namespace {

/// The language with these three settings, null for none.
Language LanguageWith(const char* all, const char* messages, const char* lang) {
    const EnvironmentSetting first("LC_ALL", all);
    const EnvironmentSetting second("LC_MESSAGES", messages);
    const EnvironmentSetting third("LANG", lang);
    return UserLanguage();
}

TEST(MappedFile, OutlivesTheNameOfItsFile) {
    MappedFile mapped;
    ASSERT_TRUE(mapped.Map(TemporaryFile("some bytes").Path()));
    EXPECT_EQ(TextOf(mapped.Bytes()), "some bytes");
}

TEST(UserLanguage, IsChineseForTheLocalesOfThePeoplesRepublic) {
    EXPECT_EQ(LanguageWith("zh_CN.UTF-8", nullptr, nullptr), Language::kChinese);
    EXPECT_EQ(LanguageWith(nullptr, "zh_CN", nullptr), Language::kChinese);
    EXPECT_EQ(LanguageWith(nullptr, nullptr, "zh_CN.GB18030"), Language::kChinese);
}

TEST(UserLanguage, IsEnglishForEveryOtherLocale) {
    EXPECT_EQ(LanguageWith(nullptr, nullptr, nullptr), Language::kEnglish);
    EXPECT_EQ(LanguageWith("zh_TW.UTF-8", nullptr, nullptr), Language::kEnglish);
    EXPECT_EQ(LanguageWith("C", nullptr, nullptr), Language::kEnglish);
    EXPECT_EQ(LanguageWith("zh", nullptr, nullptr), Language::kEnglish);
}

TEST(UserLanguage, IsThatOfTheStrongestVariableThatIsNotEmpty) {
    EXPECT_EQ(LanguageWith("C", "zh_CN", "zh_CN"), Language::kEnglish);
    EXPECT_EQ(LanguageWith(nullptr, "de_DE", "zh_CN"), Language::kEnglish);
    EXPECT_EQ(LanguageWith("", "", "zh_CN"), Language::kChinese);
}

}  // namespace
}  // namespace zorvan::test
