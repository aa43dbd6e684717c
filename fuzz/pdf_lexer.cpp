// Cuts any bytes into tokens as the readers of PDF text do: each call must stay inside its input and get on,
// and what it makes must go again.
#include <cstdint>

#include "fuzz/pdf_job.h"
#include "pdf/lexer.h"

using zorvan::FreeObject;
using zorvan::PdfObject;
using zorvan::fuzz::Require;

namespace lex = zorvan::lex;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zorvan::JobContext& job = zorvan::fuzz::BegunJob();
    std::span<const std::uint8_t> rest(data, size);
    while (true) {
        PdfObject token;
        std::uint32_t consumed = 0;
        const std::uint32_t status = zorvan::ScanToken(rest, job.names, token, consumed);
        Require(consumed <= rest.size());
        rest = rest.subspan(consumed);
        if (lex::IsError(status) || (status & lex::kEnd) != 0) {
            FreeObject(token);
            return 0;
        }
        if ((status & lex::kToken) != 0 && token == zorvan::MakeOperator(0)) {
            consumed = 1;
            rest = rest.subspan(1);  // a stray bracket, which stays in place
        }
        Require(consumed > 0);
        FreeObject(token);
        Require(job.allocations.LiveBlocks() == 0);
    }
}
