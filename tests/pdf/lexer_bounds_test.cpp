// The scanner on input that ends where readable memory ends, and its progress over arbitrary bytes.
#include <random>
#include <string>

#include "api/current_job.h"
#include "pdf/lexer.h"
#include "support/guarded_buffer.h"
#include "support/job_fixture.h"

namespace zorvan::test {
namespace {

class LexerBounds : public JobTest {
protected:
    /// Scans to the end or to the first error as both readers of tokens do; false when it does not get on.
    static bool ScanAll(std::span<const std::uint8_t> bytes) {
        const std::size_t mostCalls = bytes.size() + 1;
        for (std::size_t calls = 0; calls < mostCalls; ++calls) {
            PdfObject token;
            std::uint32_t consumed = 0;
            const std::uint32_t status = ScanToken(bytes, CurrentNames(), token, consumed);
            if (consumed > bytes.size()) {
                return false;
            }
            bytes = bytes.subspan(consumed);
            if ((status & lex::kEnd) != 0 || lex::IsError(status)) {
                return true;
            }
            if (token == MakeOperator(0)) {
                bytes = bytes.subspan(1);  // the stray byte, which is there
            }
            FreeObject(token);
        }
        return false;
    }
};

TEST_F(LexerBounds, ReadsNoByteBehindTheInputHoweverItIsCut) {
    const std::string seeds[] = {
        "1 0 obj\n<< /Type /Page /A#42C [ 1 -2.5 +.5 true null 12 0 R ] /S (a(b\\)c)) /H <48 65> >>\nendobj",
        "% comment\r\nq 1 0 0 1 72.25 -72 cm BT /F1 12 Tf (\\\\\\() Tj ET Q f* } ) {",
        "-",
        "+.",
        "1.",
        "/#",
        "/#4",
        "<",
        "<<",
        "<>",
        ">",
        ">>",
        "%",
        "(",
        "(\\",
        "/" + std::string(130, '#'),
        "/" + std::string(200, 'n'),
        std::string(200, 'k'),
        std::string(64, '-'),
        std::string("\0\b\t ", 4),
    };
    GuardedBuffer guarded(300);
    ASSERT_TRUE(guarded.Ready());
    for (const std::string& seed : seeds) {
        for (std::size_t length = 0; length <= seed.size(); ++length) {
            EXPECT_TRUE(ScanAll(guarded.Put(seed.substr(0, length)))) << seed.substr(0, length);
        }
    }
}

TEST_F(LexerBounds, GetsToTheEndOfRandomBytes) {
    constexpr std::string_view kTelling("()<>[]{}/%#\\+-.019 \0\b\r\nendobjR", 31);
    std::mt19937 random(20);
    GuardedBuffer guarded(300);
    ASSERT_TRUE(guarded.Ready());
    for (int run = 0; run < 3000; ++run) {
        std::string text(random() % 300, '\0');
        for (char& letter : text) {
            letter =
                random() % 8 == 0 ? static_cast<char>(random() % 256) : kTelling[random() % kTelling.size()];
        }
        EXPECT_TRUE(ScanAll(guarded.Put(text))) << text;
    }
}

}  // namespace
}  // namespace zorvan::test
