// What the system gives: mapped files, the user's language, modules.
#include <filesystem>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "pdf/describe.h"
#include "pdf/language_setting.h"
#include "platform/filter_library.h"
#include "platform/language.h"
#include "platform/mapped_file.h"
#include "platform/seeded_hash.h"
#include "support/host.h"

namespace zorvan::test {
namespace {

std::ptrdiff_t OpenDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
}

/// The language with these three settings, null for none.
Language LanguageWith(const char* all, const char* messages, const char* lang) {
    const EnvironmentSetting first("LC_ALL", all);
    const EnvironmentSetting second("LC_MESSAGES", messages);
    const EnvironmentSetting third("LANG", lang);
    return UserLanguage();
}

TEST(MappedFile, ShowsAllBytesAndKeepsNoDescriptor) {
    const TemporaryFile file("some bytes");
    const std::ptrdiff_t before = OpenDescriptors();
    MappedFile mapped;
    ASSERT_TRUE(mapped.Map(file.Path()));
    EXPECT_EQ(TextOf(mapped.Bytes()), "some bytes");
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(MappedFile, OutlivesTheNameOfItsFile) {
    MappedFile mapped;
    ASSERT_TRUE(mapped.Map(TemporaryFile("some bytes").Path()));
    EXPECT_EQ(TextOf(mapped.Bytes()), "some bytes");
}

TEST(MappedFile, ShowsNothingOfAnEmptyFileAndAfterUnmapping) {
    MappedFile empty;
    ASSERT_TRUE(empty.Map(TemporaryFile("").Path()));
    EXPECT_EQ(empty.Bytes().size(), 0U);
    MappedFile mapped;
    ASSERT_TRUE(mapped.Map(TemporaryFile("x").Path()));
    mapped.Unmap();
    mapped.Unmap();
    EXPECT_EQ(mapped.Bytes().size(), 0U);
}

TEST(MappedFile, KeepsNoDescriptorOfWhatItCannotMap) {
    const std::ptrdiff_t before = OpenDescriptors();
    MappedFile mapped;
    EXPECT_FALSE(mapped.Map("/tmp"));
    EXPECT_FALSE(mapped.Map(""));
    EXPECT_EQ(mapped.Bytes().size(), 0U);
    EXPECT_EQ(OpenDescriptors(), before);
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

TEST(FilterLibrary, HasAllEightEntryPoints) {
    FilterLibrary library;
    ASSERT_EQ(library.Load(FilterFolder()), Status::kOk);
    EXPECT_NE(library.createEncoder, nullptr);
    EXPECT_NE(library.encodeData, nullptr);
    EXPECT_NE(library.encodeEod, nullptr);
    EXPECT_NE(library.flush, nullptr);
    EXPECT_NE(library.destroyEncoder, nullptr);
    EXPECT_NE(library.createDecoder, nullptr);
    EXPECT_NE(library.decodeData, nullptr);
    EXPECT_NE(library.destroyDecoder, nullptr);
}

TEST(FilterLibrary, IsNotLoadedFromAnotherFolder) {
    FilterLibrary library;
    EXPECT_EQ(library.Load("/nonexistent/"), Status::kFailLoadDll);
}

TEST(FilterLibrary, PutsNoSeparatorBehindTheFolder) {
    std::string folder = FilterFolder();
    folder.pop_back();
    EXPECT_EQ(FilterLibrary().Load(folder), Status::kFailLoadDll);
}

TEST(SeededHash, TellsTextsApartByTheirLengthToo) {
    const SeededHash hash;
    EXPECT_EQ(hash(std::string_view("Length")), hash(std::string_view("Length")));
    EXPECT_NE(hash(std::string_view("")), hash(std::string_view("\0", 1)));
    EXPECT_NE(hash(std::string_view("12345678")), hash(std::string_view("12345678\0", 9)));
}

}  // namespace
}  // namespace zorvan::test
