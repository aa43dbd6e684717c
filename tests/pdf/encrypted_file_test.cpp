// Encrypted files: who may open them, and what is decrypted by which key. The files are made here, by the PDF
// Reference's algorithms (3.1 to 3.4), with the digest and the cipher that security_test checks.
#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include "fonts/font_page.h"
#include "pdf/md5.h"
#include "pdf/rc4.h"

namespace zorvan::test {
namespace {

using namespace std::string_literals;

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const std::string kPadding(
    "\x28\xBF\x4E\x5E\x4E\x75\x8A\x41\x64\x00\x4E\x56\xFF\xFA\x01\x08"
    "\x2E\x2E\x00\xB6\xD0\x68\x3E\x80\x2F\x0C\xA9\xFE\x64\x53\x69\x7A",
    32);
constexpr const char* kIdentifier = "000102030405060708090A0B0C0D0E0F";
const std::string kIdentifierBytes("\x00\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F", 16);

Bytes BytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string Digest(std::string_view text) {
    const auto digest = Md5(BytesOf(text));
    return {digest.begin(), digest.end()};
}

std::string Apply(std::string_view key, std::string_view text) {
    std::vector<std::uint8_t> output(text.size());
    Rc4(BytesOf(key)).Apply(BytesOf(text), output.data());
    return {output.begin(), output.end()};
}

std::string Padded(std::string_view password) {
    return (std::string(password) + kPadding).substr(0, 32);
}

/// A string in parentheses, with escapes of one letter only.
std::string InParentheses(std::string_view bytes) {
    std::string text = "(";
    for (const char byte : bytes) {
        if (byte == '\r') {
            text += "\\r";
        } else {
            text += std::string_view("()\\").find(byte) == std::string_view::npos ? "" : "\\";
            text += byte;
        }
    }
    return text + ")";
}

std::string InDigits(std::string_view bytes) {
    std::string text = "<";
    for (const char byte : bytes) {
        constexpr const char* kDigits = "0123456789abcdef";
        const auto value = static_cast<unsigned char>(byte);
        text += {kDigits[value >> 4U], kDigits[value & 15U]};
    }
    return text + ">";
}

constexpr int kMayPrint = -60;    // bit 3, and the upper ones that are always set
constexpr int kMayNothing = -64;  // without bit 3

/// The keys of a file.
class Vault {
public:
    Vault(std::string_view user, std::string_view owner, int permissions)
        : permissions_(permissions), owner_(Apply(Digest(Padded(owner)).substr(0, 5), Padded(user))) {
        std::string text = Padded(user) + owner_;
        for (unsigned shift = 0; shift < 32; shift += 8) {
            text += static_cast<char>(static_cast<unsigned>(permissions) >> shift);
        }
        key_ = Digest(text + kIdentifierBytes).substr(0, 5);
        user_ = Apply(key_, kPadding);
    }

    [[nodiscard]] const std::string& Owner() const { return owner_; }
    [[nodiscard]] const std::string& User() const { return user_; }

    [[nodiscard]] std::string Encrypted(std::string_view text, unsigned number,
                                        unsigned generation = 0) const {
        std::string key = key_;
        for (const unsigned part : {number, number >> 8U, number >> 16U, generation, generation >> 8U}) {
            key += static_cast<char>(part);
        }
        return Apply(Digest(key).substr(0, 10), text);
    }
    /// A string of an object.
    [[nodiscard]] std::string Literal(std::string_view text, unsigned number, unsigned generation = 0) const {
        return InParentheses(Encrypted(text, number, generation));
    }
    [[nodiscard]] std::string Hexadecimal(std::string_view text, unsigned number) const {
        return InDigits(Encrypted(text, number));
    }

    /// The dictionary for this revision, with the entries in its place when there are any.
    [[nodiscard]] std::string Dictionary(std::string_view entries = "") const {
        return "<< /V 1 /P " + std::to_string(permissions_) + " " +
               (entries.empty()
                    ? "/Filter /Standard /R 2 /O " + InParentheses(owner_) + " /U " + InParentheses(user_)
                    : std::string(entries)) +
               " >>";
    }

private:
    int permissions_;
    std::string owner_;
    std::string key_;
    std::string user_;
};

const Vault& Open() {
    static const Vault vault("", "owner", kMayPrint);
    return vault;
}

/// A page whose content, object 4, is given already encrypted; the objects from 10 on are the test's.
PdfBuilder EncryptedPage(const Vault& vault, std::string_view content, std::string_view pageEntries = "") {
    return OnePage(vault.Encrypted(content, 4), pageEntries);
}

/// The file's bytes, with the dictionary in a place of its own or in the trailer.
std::string Locked(PdfBuilder pdf, const std::string& dictionary, bool inTrailer = false) {
    const std::string identifiers = " /ID [<"s + kIdentifier + "><" + kIdentifier + ">]";
    if (!inTrailer) {
        pdf.Object(99, dictionary);
    }
    pdf.Section("/Root 1 0 R /Encrypt " + (inTrailer ? dictionary : "99 0 R") + identifiers);
    return pdf.Bytes();
}

/// Converts a file with a password, or with no record at all.
Conversion ConvertWith(const std::string& bytes, const std::string* password) {
    ZORVAN_PasswordRecord record{};
    if (password != nullptr) {
        record.length = static_cast<unsigned>(password->size());
        std::memcpy(record.text, password->data(), std::min(password->size(), sizeof record.text));
    }
    const TemporaryFile file(bytes);
    Pieces::Reset();
    Conversion conversion;
    const Job job;
    conversion.fileBegin =
        ZORVAN_OneFileBegin(file.Path().c_str(), Pieces::Take, password == nullptr ? nullptr : &record);
    conversion.global = ZORVAN_OutputGlobalResources();
    for (int page = 1; page <= ZORVAN_GetTotalPages(); ++page) {
        conversion.pages.push_back(ZORVAN_OutputOnePage(static_cast<unsigned>(page)));
    }
    ZORVAN_OneFileEnd();
    conversion.error = GetErrorInfo();
    conversion.output = Pieces::Joined();
    return conversion;
}

/// What opening a file of these passwords comes to with this one; when it opens, the page must be readable.
int Opening(const Vault& vault, const std::string& password, std::string_view dictionaryEntries = "") {
    const std::string bytes = Locked(EncryptedPage(vault, "1 w"), vault.Dictionary(dictionaryEntries));
    const Conversion conversion = ConvertWith(bytes, &password);
    EXPECT_EQ(conversion.error.code, conversion.fileBegin);
    EXPECT_EQ(conversion.error.offset, 0U);
    if (conversion.fileBegin == 0) {
        EXPECT_EQ(ContentOf(conversion.output), "1 w\n");
    } else {
        EXPECT_EQ(conversion.output, "");
    }
    return conversion.fileBegin;
}

// --- who may open a file ---

TEST(EncryptedFile, OpensForTheUserWhenPrintingIsPermitted) {
    EXPECT_EQ(Opening({"user", "owner", kMayPrint}, "user"), 0);
    EXPECT_EQ(Opening({"user", "owner", 4}, "user"), 0);
    EXPECT_EQ(Opening({"user", "owner", kMayNothing}, "user"), -4068);
    EXPECT_EQ(Opening({"user", "owner", 0}, "user"), -4068);
}

TEST(EncryptedFile, OpensForItsOwnerAlways) {
    EXPECT_EQ(Opening({"user", "owner", kMayPrint}, "owner"), 0);
    EXPECT_EQ(Opening({"user", "owner", kMayNothing}, "owner"), 0);
    EXPECT_EQ(Opening({"", "owner", kMayNothing}, "owner"), 0);
    EXPECT_EQ(Opening({"", "", kMayNothing}, ""), 0);
}

TEST(EncryptedFile, OpensForNobodyElse) {
    for (const std::string password : {"", "User", "use", "users", "x"}) {
        EXPECT_EQ(Opening({"user", "owner", kMayPrint}, password), -4068) << password;
    }
}

TEST(EncryptedFile, OfAnEmptyPasswordOpensWithoutOne) {
    EXPECT_EQ(Opening({"", "owner", kMayPrint}, ""), 0);
    EXPECT_EQ(Opening({"", "owner", kMayNothing}, ""), -4068);
    const Vault& vault = Open();
    const Conversion conversion =
        ConvertWith(Locked(EncryptedPage(vault, "1 w"), vault.Dictionary()), nullptr);
    EXPECT_EQ(conversion.fileBegin, 0);
    EXPECT_EQ(ContentOf(conversion.output), "1 w\n");
}

TEST(EncryptedFile, CutsPasswordsToThirtyTwoBytes) {
    const std::string full = "0123456789abcdefghijklmnopqrstuv";
    ASSERT_EQ(full.size(), 32U);
    for (const std::string& password : {full, full + "w", full + "wxyzWXYZ"}) {
        EXPECT_EQ(Opening({full, "owner", kMayPrint}, password), 0) << password;
        EXPECT_EQ(Opening({full + "other", "owner", kMayPrint}, password), 0) << password;
        EXPECT_EQ(Opening({"user", full, kMayNothing}, password), 0) << password;
    }
    EXPECT_EQ(Opening({full, "owner", kMayPrint}, full.substr(1)), -4068);
    EXPECT_EQ(Opening({full, "owner", kMayPrint}, full.substr(0, 31)), -4068);
}

TEST(EncryptedFile, MayHoldItsDictionaryInTheTrailer) {
    const Vault& vault = Open();
    const Conversion conversion =
        ConvertWith(Locked(EncryptedPage(vault, "1 w"), vault.Dictionary(), true), nullptr);
    EXPECT_EQ(conversion.fileBegin, 0);
    EXPECT_EQ(ContentOf(conversion.output), "1 w\n");
}

TEST(EncryptedFile, PaysNoHeedToVersionAndLength) {
    const Vault& vault = Open();
    const std::string entries = "/V 4 /Length 128 /Filter /Standard /R 2 /O " + InParentheses(vault.Owner()) +
                                " /U " + InParentheses(vault.User());
    EXPECT_EQ(Opening(vault, "", entries), 0);
}

TEST(EncryptedFile, OfAnotherHandlerOrRevisionIsRefused) {
    const Vault& vault = Open();
    const std::string strings = "/O " + InParentheses(vault.Owner()) + " /U " + InParentheses(vault.User());
    for (const std::string entries :
         {"/Filter /Standard /R 3 ", "/Filter /Standard /R 1 ", "/Filter /Standard ",
          "/Filter /Standard /R 2.5 ", "/Filter /Standard /R /2 ", "/Filter /Other /R 2 ",
          "/Filter (Standard) /R 2 ", "/R 2 "}) {
        EXPECT_EQ(Opening(vault, "", entries + strings), -4091) << entries;
    }
}

TEST(EncryptedFile, WhoseDictionaryIsNoneIsRefused) {
    const Vault& vault = Open();
    for (const std::string object : {"5", "[/Standard 2]", "/Standard", "(Standard)", "<< >>"}) {
        for (const bool inTrailer : {false, true}) {
            EXPECT_EQ(ConvertWith(Locked(EncryptedPage(vault, "1 w"), object, inTrailer), nullptr).fileBegin,
                      -4091)
                << object;
        }
    }
}

TEST(EncryptedFile, WithoutItsPasswordEntriesOpensForNobody) {
    const Vault& vault = Open();
    const std::string owner = " /O " + InParentheses(vault.Owner());
    const std::string user = " /U " + InParentheses(vault.User());
    for (const std::string& strings :
         {owner, user, ""s, owner + " /U 5", " /O /X" + user, owner + " /U ()"}) {
        EXPECT_EQ(Opening(vault, "", "/Filter /Standard /R 2" + strings), -4068);
        EXPECT_EQ(Opening(vault, "owner", "/Filter /Standard /R 2" + strings), -4068);
    }
}

TEST(EncryptedFile, ReadsDigitsOfPasswordEntriesAsCharacters) {
    const Vault& vault = Open();
    EXPECT_EQ(Opening(vault, "",
                      "/Filter /Standard /R 2 /O " + InDigits(vault.Owner()) + " /U " +
                          InParentheses(vault.User())),
              -4068);
    EXPECT_EQ(Opening(vault, "",
                      "/Filter /Standard /R 2 /O " + InParentheses(vault.Owner()) + " /U " +
                          InDigits(vault.User())),
              -4068);
}

/// The bytes as octal escapes, with the digit 8 wherever that gives the same value; how many have it.
std::pair<std::string, int> InOctal(std::string_view bytes) {
    std::string text = "(";
    int eights = 0;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        unsigned digits[] = {value / 64U, value / 8U % 8U, value % 8U};
        if (digits[2] == 0 && digits[1] > 0) {
            --digits[1], digits[2] = 8, ++eights;
        } else if (digits[1] == 0 && digits[0] > 0) {
            --digits[0], digits[1] = 8, ++eights;
        }
        text += "\\";
        for (const unsigned digit : digits) {
            text += static_cast<char>('0' + digit);
        }
    }
    return {text + ")", eights};
}

TEST(EncryptedFile, ReadsOctalEscapesOfPasswordEntriesWithTheDigitEight) {
    int eights = 0;
    for (const std::string owner : {"a", "b", "c"}) {
        const Vault vault("", owner, kMayPrint);
        const auto [ownerText, ownerEights] = InOctal(vault.Owner());
        const auto [userText, userEights] = InOctal(vault.User());
        EXPECT_EQ(Opening(vault, "", "/Filter /Standard /R 2 /O " + ownerText + " /U " + userText), 0)
            << owner;
        eights += ownerEights + userEights;
    }
    EXPECT_GT(eights, 10);
}

/// The bytes with an escape wherever there is one for it, and a useless one before other characters.
std::string InEscapes(std::string_view bytes) {
    std::string text = "(";
    for (const char byte : bytes) {
        const std::size_t named = std::string_view("\b\f\n\r\t").find(byte);
        const bool digit = byte >= '0' && byte <= '8';
        const bool letter = std::string_view("bfnrt").find(byte) != std::string_view::npos;
        text += digit || letter ? "" : "\\";
        text += named == std::string_view::npos ? byte : "bfnrt"[named];
    }
    return text + ")";
}

TEST(EncryptedFile, ReadsTheOtherEscapesOfPasswordEntries) {
    for (const std::string owner : {"a", "b", "c", "d", "e", "f", "g", "h"}) {
        const Vault vault("", owner, kMayPrint);
        EXPECT_EQ(Opening(vault, "",
                          "/Filter /Standard /R 2 /O " + InEscapes(vault.Owner()) + " /U " +
                              InEscapes(vault.User())),
                  0)
            << owner;
    }
}

TEST(EncryptedFile, TakesThirtyTwoBytesOfPasswordEntries) {
    const Vault& vault = Open();
    EXPECT_EQ(Opening(vault, "",
                      "/Filter /Standard /R 2 /O " + InParentheses(vault.Owner() + "more") + " /U " +
                          InParentheses(vault.User() + "\\more")),
              0);
}

TEST(EncryptedFile, ForgetsItsKeyWhenTheNextFileIsPlain) {
    const Vault& vault = Open();
    const Job job;
    EXPECT_EQ(RunFile(Locked(EncryptedPage(vault, "1 w"), vault.Dictionary())).begin, 0);
    EXPECT_EQ(ContentOf(RunFile(OnePage("2 w").Bytes()).output), "2 w\n");
    EXPECT_EQ(ContentOf(RunFile(Locked(EncryptedPage(vault, "3 w"), vault.Dictionary())).output), "3 w\n");
}

// --- what is decrypted ---

/// Converts a file that opens without a password; all must go well.
std::string Unlocked(PdfBuilder pdf) {
    const Conversion conversion = ConvertWith(Locked(std::move(pdf), Open().Dictionary()), nullptr);
    EXPECT_EQ(conversion.fileBegin, 0);
    EXPECT_EQ(conversion.global, 0);
    EXPECT_EQ(conversion.pages, std::vector<int>{0});
    EXPECT_EQ(conversion.error.code, 0) << conversion.error.message;
    return conversion.output;
}

TEST(EncryptedStream, IsDecryptedBeforeItsFilters) {
    const std::string hexadecimal = "312077>";
    PdfBuilder pdf = OnePage("", "");
    pdf.Stream(4, Open().Encrypted(hexadecimal, 4), "/Filter /ASCIIHexDecode");
    EXPECT_EQ(ContentOf(Unlocked(pdf)), "1 w\n");
    // "1 w" in one stored block, with its checksum.
    const std::string flate("\x78\x01\x01\x03\x00\xFC\xFF\x31\x20\x77\x01\x4D\x00\xC9", 14);
    PdfBuilder packed = OnePage("", "");
    packed.Stream(4, Open().Encrypted(flate, 4), "/Filter /FlateDecode");
    EXPECT_EQ(ContentOf(Unlocked(packed)), "1 w\n");
}

TEST(EncryptedStream, OfManyBytesIsOneKeystream) {
    std::string content;
    std::string expected;
    for (int i = 0; i < 30000; ++i) {
        content += std::to_string(i) + " w ";
        expected += std::to_string(i) + " w\n";
    }
    EXPECT_EQ(ContentOf(Unlocked(EncryptedPage(Open(), content))), expected);
}

TEST(EncryptedStream, HasTheKeyOfItsNumberAndGeneration) {
    PdfBuilder pdf = OnePage("", "");
    pdf.Object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] /Contents [70000 0 R 300 258 R] >>");
    const auto stream = [](const std::string& data) {
        return "<< /Length " + std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream";
    };
    pdf.Object(70000, stream(Open().Encrypted("1 w", 70000)));
    pdf.Object(300, stream(Open().Encrypted("2 w", 300, 258)), 258);
    EXPECT_EQ(ContentOf(Unlocked(pdf)), "1 w\n2 w\n");
}

TEST(EncryptedStream, HoldsStringsThatAreNotDecryptedAgain) {
    EXPECT_EQ(ContentOf(Unlocked(EncryptedPage(Open(), "BT (abc\\101) Tj <414243> Tj ET"))),
              "BT\n(abc\\101) Tj\n<414243> Tj\nET\n");
}

TEST(EncryptedStream, OfAFormIsDecryptedByItsOwnKey) {
    PdfBuilder pdf = EncryptedPage(Open(), "/X Do", "/Resources << /XObject << /X 10 0 R >> >>");
    pdf.Stream(10, Open().Encrypted("7 w", 10), "/Subtype /Form /BBox [0 0 9 9]");
    EXPECT_THAT(PageSetupOf(Unlocked(pdf)), HasSubstr("/PaintProc {pop save {\n7 w\n} exec restore}"));
}

/// What the setup of a page defines that draws this image, object 10.
std::string ImageSetup(const std::string& data, std::string_view filter) {
    PdfBuilder pdf = EncryptedPage(Open(), "/X Do", "/Resources << /XObject << /X 10 0 R >> >>");
    pdf.Stream(10, Open().Encrypted(data, 10),
               "/Subtype /Image /Width 2 /Height 1 /BitsPerComponent 8 /ColorSpace /DeviceGray " +
                   std::string(filter));
    return PageSetupOf(Unlocked(pdf));
}

// Without a filter: the codes 256, 65, 66 and 257 of nine bits each.
TEST(EncryptedStream, OfAnImageIsEmbeddedDecrypted) {
    EXPECT_EQ(ImageSetup("4142>", "/Filter /ASCIIHexDecode"),
              "/N10 currentfile <</Filter /ASCIIHexDecode\n/Intent 0 >> /ReusableStreamDecode\n"
              "%%BeginData: 5 Bytes\nfilter\n4142>\n%%EndData\n/DataSource defineRes pop\n");
    EXPECT_EQ(ImageSetup("AB", ""),
              "/N10 currentfile <</Filter /LZWDecode /Intent 0>> /ReusableStreamDecode\n"
              "%%BeginData: 256 Bytes\nfilter\n\x80\x10\x48\x50\x10\n%%EndData\n/DataSource defineRes pop\n");
}

/// The collection's name of a composite font whose dictionary, object 11, has this registry.
std::string RegistryRead(const std::string& registry) {
    PdfBuilder pdf = EncryptedPage(Open(), "n", "/Resources << /Font << /F 10 0 R >> >>");
    pdf.Object(10, "<< /Subtype /Type0 /Encoding /Identity-H /DescendantFonts [11 0 R] >>");
    pdf.Object(11, "<< /Subtype /CIDFontType0 /BaseFont /Part /CIDSystemInfo << /Registry " + registry +
                       " /Ordering " + Open().Literal("Japan1", 11) + " >> >>");
    return Between(PageSetupOf(Unlocked(pdf)), " [(Part)] /", " [ /SansSerif ]");
}

TEST(EncryptedString, OfAFontIsDecryptedByTheKeyOfTheObjectThatHoldsIt) {
    EXPECT_EQ(RegistryRead(Open().Literal("Adobe", 11)), "Adobe-Japan1");
    EXPECT_EQ(RegistryRead("12 0 R"), "-Japan1");
}

TEST(EncryptedString, OfAnObjectOfItsOwnHasThatObjectsKey) {
    PdfBuilder pdf = EncryptedPage(Open(), "n", "/Resources << /Font << /F 10 0 R >> >>");
    pdf.Object(10, "<< /Subtype /Type0 /Encoding /Identity-H /DescendantFonts [11 0 R] >>");
    pdf.Object(11, "<< /Subtype /CIDFontType0 /BaseFont /Part /CIDSystemInfo 12 0 R >>");
    pdf.Object(12, "<< /Registry " + Open().Literal("Adobe", 12) + " /Ordering 13 2 R >>");
    pdf.Object(13, Open().Literal("Korea1", 13, 2), 2);
    EXPECT_EQ(Between(PageSetupOf(Unlocked(pdf)), " [(Part)] /", " [ /SansSerif ]"), "Adobe-Korea1");
}

TEST(EncryptedString, OfDigitsIsDecryptedByTheBytesThatTheyStandFor) {
    EXPECT_EQ(RegistryRead(Open().Hexadecimal("Adobe", 11)), "Adobe-Japan1");
    std::string spaced = Open().Hexadecimal("Adobe", 11);
    spaced.insert(3, " \n");
    EXPECT_EQ(RegistryRead(spaced), "Adobe-Japan1");
}

// ((49 * 8 + 48) * 8 + 49) mod 256 = 241. The first byte of the text is what the keystream makes of that.
TEST(EncryptedString, TakesOctalEscapesByTheCodesOfTheirLetters) {
    const std::string text = Open().Encrypted("\xF1"s, 11) + "dobe";
    const std::string rest = Open().Encrypted(text, 11).substr(1);
    const std::string name = RegistryRead("(\\101" + InParentheses(rest).substr(1));
    EXPECT_EQ(name, RegistryRead(InDigits("\xF1" + rest)));
    EXPECT_THAT(name, EndsWith("dobe-Japan1"));
    EXPECT_NE(name, RegistryRead(InDigits("\x41" + rest)));
}

TEST(EncryptedString, WithLineEndsInItKeepsThemAll) {
    for (unsigned number = 12; number < 2000; ++number) {
        const std::string bytes = Open().Encrypted("Adobe", number);
        if (bytes.find('\r') == std::string::npos && bytes.find('\n') == std::string::npos) {
            continue;
        }
        PdfBuilder pdf = EncryptedPage(Open(), "n", "/Resources << /Font << /F 10 0 R >> >>");
        pdf.Object(10, "<< /Subtype /Type0 /Encoding /Identity-H /DescendantFonts [11 0 R] >>");
        pdf.Object(11, "<< /Subtype /CIDFontType0 /BaseFont /Part /CIDSystemInfo << /Registry " +
                           std::to_string(number) + " 0 R >> >>");
        std::string literal = "(";  // with the line ends as they are
        for (const char byte : bytes) {
            literal += std::string_view("()\\").find(byte) == std::string_view::npos ? "" : "\\";
            literal += byte;
        }
        pdf.Object(number, literal + ")");
        EXPECT_EQ(Between(PageSetupOf(Unlocked(pdf)), " [(Part)] /", " [ /SansSerif ]"), "Adobe-") << number;
    }
}

/// What a halftone, object 11, has for its name.
std::string HalftoneNamed(const std::string& name) {
    PdfBuilder pdf = EncryptedPage(Open(), "n", "/Resources << /ExtGState << /G 10 0 R >> >>");
    pdf.Object(10, "<< /HT 11 0 R >>");
    pdf.Object(11, "<< /HalftoneType 1 /Frequency 60 /Angle 45 /SpotFunction /Round /HalftoneName " +
                       Open().Literal(name, 11) + " >>");
    return Between(Unlocked(pdf), "/HalftoneName ", "\n");
}

TEST(EncryptedString, NamesAHalftone) {
    EXPECT_EQ(HalftoneNamed("Fine"), "(Fine)");
    EXPECT_EQ(HalftoneNamed(std::string(200, 'x')), "(" + std::string(127, 'x') + ")");
}

TEST(EncryptedString, NamesAHalftoneByItsBytesAsTheyAre) {
    EXPECT_EQ(HalftoneNamed("Fine (60)"), "(Fine (60))");
}

TEST(EncryptedString, EscapesWhatWouldNotStandInParentheses) {
    EXPECT_EQ(HalftoneNamed("a)b"), "(a\\)b)");
    EXPECT_EQ(HalftoneNamed("a(b\\c\rd"), "(a\\(b\\\\c\\rd)");
}

TEST(EncryptedString, NamesTheFileOfAnOpiComment) {
    PdfBuilder pdf = EncryptedPage(Open(), "/X Do", "/Resources << /XObject << /X 10 0 R >> >>");
    pdf.Stream(10, Open().Encrypted("7 w", 10),
               "/Subtype /Form /BBox [0 0 9 9] /OPI << /1.3 << /F " + Open().Literal("high.tif", 10) +
                   " /ID 11 0 R >> >>");
    pdf.Object(11, Open().Literal("identity", 11));
    const std::string setup = PageSetupOf(Unlocked(pdf));
    EXPECT_THAT(setup, HasSubstr("%ALDImageFilename: high.tif\n"));
    EXPECT_THAT(setup, HasSubstr("%ALDImageID: identity\n"));
}

TEST(EncryptedString, NamesThePlateOfAPage) {
    const std::string output = Unlocked(EncryptedPage(
        Open(), "n", "/SeparationInfo << /DeviceColorant " + Open().Literal("Gold", 3) + " >>"));
    EXPECT_THAT(output, HasSubstr("%%PlateColor: Gold\n"));
}

// --- hostile files ---

TEST(HostileEncryptedFile, OfEmptyAndUnfinishedStringsGoesOn) {
    for (const std::string registry : {"()", "<>", "(\\)", "(\\1)", "<4>", "(\\", "<zz>"}) {
        PdfBuilder pdf = EncryptedPage(Open(), "1 w", "/Resources << /Font << /F 10 0 R >> >>");
        pdf.Object(10, "<< /Subtype /Type0 /Encoding /Identity-H /DescendantFonts [11 0 R] >>");
        pdf.Object(11, "<< /Subtype /CIDFontType0 /BaseFont /Part /CIDSystemInfo << /Registry " + registry +
                           " >> >>");
        const Conversion conversion = ConvertWith(Locked(pdf, Open().Dictionary()), nullptr);
        EXPECT_EQ(conversion.fileBegin, 0) << registry;
        EXPECT_EQ(conversion.pages.size(), 1U) << registry;
    }
}

TEST(HostileEncryptedFile, WithoutIdentifiersHasZerosForThem) {
    PdfBuilder pdf = OnePage("1 w");
    pdf.Object(99, Open().Dictionary());
    pdf.Section("/Root 1 0 R /Encrypt 99 0 R");
    EXPECT_EQ(ConvertWith(pdf.Bytes(), nullptr).fileBegin, -4068);
}

TEST(HostileEncryptedFile, WhoseDictionaryIsItselfIsRefused) {
    EXPECT_EQ(ConvertWith(Locked(OnePage("1 w"), "99 0 R"), nullptr).fileBegin, -4091);
}

TEST(HostileEncryptedFile, WithAPasswordLengthBeyondTheRecordReadsNoFurther) {
    const std::string password(1000, 'x');
    const Conversion conversion =
        ConvertWith(Locked(EncryptedPage(Open(), "1 w"), Open().Dictionary()), &password);
    EXPECT_EQ(conversion.fileBegin, -4068);
}

}  // namespace
}  // namespace zorvan::test
