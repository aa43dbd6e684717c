// What the system gives: mapped files, modules.
#include <string>

#include <gtest/gtest.h>

#include "pdf/describe.h"
#include "platform/filter_library.h"
#include "platform/mapped_file.h"
#include "platform/seeded_hash.h"
#include "support/host.h"
#include "support/system.h"

namespace zorvan::test {
namespace {

TEST(MappedFile, ShowsAllBytesAndKeepsNoDescriptor) {
    const TemporaryFile file("some bytes");
    const std::ptrdiff_t before = OpenHandles();
    MappedFile mapped;
    ASSERT_TRUE(mapped.Map(file.Path()));
    EXPECT_EQ(TextOf(mapped.Bytes()), "some bytes");
    EXPECT_EQ(OpenHandles(), before);
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
    const std::ptrdiff_t before = OpenHandles();
    MappedFile mapped;
    EXPECT_FALSE(mapped.Map("/tmp"));
    EXPECT_FALSE(mapped.Map(""));
    EXPECT_EQ(mapped.Bytes().size(), 0U);
    EXPECT_EQ(OpenHandles(), before);
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
