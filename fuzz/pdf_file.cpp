// Opens any bytes as a file, walks its page tree and decodes what its pages show.
#include <cstdint>

#include "fuzz/pdf_job.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/page_tree.h"
#include "pdf/stream_reader.h"

using namespace zorvan;  // NOLINT(google-build-using-namespace): a program of one function

namespace {

/// Reads the beginning of each page's contents; a bomb's rest shows nothing new.
class PageReader : public PageReceiver {
public:
    void AddPage(const PageAttributes& page) override {
        constexpr int kEnoughPages = 16;
        if (++pages_ > kEnoughPages) {
            return;
        }
        const Resolved resources(page.resources);
        const Resolved contents(DictGet(page.dictionary, names::kContents));
        Decode(contents.Get());
        for (std::uint32_t i = 0; i < ArrayCount(contents.Get()); ++i) {
            Decode(Resolved(ArrayGet(contents.Get(), i)).Get());
        }
    }

private:
    static void Decode(PdfObject stream) {
        constexpr int kEnoughChunks = 20;
        StreamReader reader(stream);
        reader.StartDecoding();
        int state = 1;
        for (int chunks = 0; state > 0 && chunks < kEnoughChunks; ++chunks) {
            Bytes chunk;
            state = reader.ReadChunk(chunk);
        }
    }

    int pages_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::InputFile file({data, size});
    if (Failed(file.Opened())) {
        fuzz::Require(Failed(CurrentJob()->error.Code()));
        return 0;
    }
    const std::size_t before = file.LiveBlocks();
    PageReader reader;
    static_cast<void>(WalkPageTree(file.File(), file.File().Pages(), reader));
    fuzz::Require(file.LiveBlocks() == before);
    return 0;
}
