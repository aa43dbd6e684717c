// Digest, cipher, and what the security handler makes of them.
#include "pdf/security.h"

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "pdf/md5.h"
#include "pdf/rc4.h"

namespace zorvan::test {
namespace {

Bytes BytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string Digits(Bytes bytes) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string digits;
    for (const std::uint8_t byte : bytes) {
        digits += {kDigits[byte >> 4U], kDigits[byte & 0xFU]};
    }
    return digits;
}

TEST(Md5, GivesTheDigestsOfTheStandard) {
    const auto digest = [](std::string_view message) { return Digits(Md5(BytesOf(message))); };
    EXPECT_EQ(digest(""), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(digest("a"), "0cc175b9c0f1b6a831c399e269772661");
    EXPECT_EQ(digest("abc"), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(digest("message digest"), "f96b697d7cb7938d525a2f31aaf161d0");
    EXPECT_EQ(digest("abcdefghijklmnopqrstuvwxyz"), "c3fcd3d76192e4007dfb496cca67e13b");
    EXPECT_EQ(digest("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"),
              "d174ab98d277d9f5a5611c2c9f419d9f");
    EXPECT_EQ(digest("12345678901234567890123456789012345678901234567890123456789012345678901234567890"),
              "57edf4a22be3c955ac49da2e2107b67a");
}

// As md5sum tells them.
TEST(Md5, EndsMessagesOfEverySizeAroundABlock) {
    const auto digest = [](std::size_t size) { return Digits(Md5(BytesOf(std::string(size, 'a')))); };
    EXPECT_EQ(digest(55), "ef1772b6dff9a122358552954ad0df65");
    EXPECT_EQ(digest(56), "3b0c8ac703f828b04c6c197006d17218");
    EXPECT_EQ(digest(63), "b06521f39153d618550606be297466d5");
    EXPECT_EQ(digest(64), "014842d480b571495a4a0363793f7367");
    EXPECT_EQ(digest(119), "8a7bd0732ed6a28ce75f6dabc90e1613");
    EXPECT_EQ(digest(120), "5f61c0ccad4cac44c75ff505e1f1e537");
}

TEST(Rc4, GivesThePublishedCiphertexts) {
    const auto apply = [](std::string_view key, std::string_view text) {
        std::vector<std::uint8_t> output(text.size());
        Rc4(BytesOf(key)).Apply(BytesOf(text), output.data());
        return Digits(output);
    };
    EXPECT_EQ(apply("Key", "Plaintext"), "bbf316e8d940af0ad3");
    EXPECT_EQ(apply("Wiki", "pedia"), "1021bf0420");
    EXPECT_EQ(apply("Secret", "Attack at dawn"), "45a01f645fc35b383552544b9bf5");
    EXPECT_EQ(apply("Key", ""), "");
}

TEST(Rc4, RunsOnWithTheNextPiece) {
    std::vector<std::uint8_t> output(9);
    Rc4 cipher(BytesOf("Key"));
    cipher.Apply(BytesOf("Plain"), output.data());
    cipher.Apply(BytesOf("text"), output.data() + 5);
    EXPECT_EQ(Digits(output), "bbf316e8d940af0ad3");
}

/// What a string becomes under the key of object 7 of a file whose own key is all zeros, the keystream taken
/// off again.
std::string Decoded(std::string_view text) {
    SecurityState security;
    security.SetObjectKey(7, 0);
    std::vector<std::uint8_t> bytes = security.DecryptLiteralString(BytesOf(text));
    security.SetObjectKey(7, 0);
    security.Rc4Apply(bytes, bytes.data());
    return {bytes.begin(), bytes.end()};
}

TEST(DecryptLiteralString, DecodesTheEscapesFirst) {
    EXPECT_EQ(Decoded("plain"), "plain");
    EXPECT_EQ(Decoded("\\(\\)\\\\\\b\\f\\n\\r\\t"), "()\\\b\f\n\r\t");
    EXPECT_EQ(Decoded("a\\"), "a\\");
}

// ((49 * 8 + 48) * 8 + 49) mod 256 = 241.
TEST(DecryptLiteralString, TakesThreeLettersByTheirCodes) {
    EXPECT_EQ(Decoded("\\101"), "\xF1");
    EXPECT_EQ(Decoded("x\\000y"), "x\xB0y");
    EXPECT_EQ(Decoded("\\xyz"), std::string(1, static_cast<char>(((120 * 8 + 121) * 8 + 122) % 256)));
    EXPECT_EQ(Decoded("\\1"), std::string(1, static_cast<char>(49 * 64 % 256)));
}

TEST(ObjectKey, IsMadeOfNumberAndGeneration) {
    const auto keystream = [](std::uint32_t number, std::uint16_t generation) {
        SecurityState security;
        security.SetObjectKey(number, generation);
        std::vector<std::uint8_t> bytes(16);
        security.Rc4Apply(bytes, bytes.data());
        return bytes;
    };
    const auto expected = [](std::vector<std::uint8_t> text) {
        const auto digest = Md5(text);
        std::vector<std::uint8_t> bytes(16);
        Rc4(Bytes(digest).first(10)).Apply(bytes, bytes.data());
        return bytes;
    };
    EXPECT_EQ(keystream(7, 0), expected({0, 0, 0, 0, 0, 7, 0, 0, 0, 0}));
    EXPECT_EQ(keystream(0x12345678, 0x9ABC), expected({0, 0, 0, 0, 0, 0x78, 0x56, 0x34, 0xBC, 0x9A}));
}

}  // namespace
}  // namespace zorvan::test
