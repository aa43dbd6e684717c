// A page waits until its box is known, or its status where it could not be taken back; then it flows.
#include "cli/document_sink.h"

#include <optional>
#include <string>
#include <string_view>

#include "cli/failure.h"
#include "cli/page_size_feature.h"

namespace zorvan::cli {

DocumentSink::DocumentSink(OutputFile& output, const Settings& settings)
    : output_(output),
      settings_(settings),
      holdsWholePages_(settings.mayDropPages && !output.CanTakeBack()) {}

void DocumentSink::BeginPage(unsigned /*page*/) {
    pageStart_ = output_.Position();
    finder_ = PageBoxFinder();
    isThrough_ = !settings_.askForPageSize && !holdsWholePages_;
}

bool DocumentSink::Hold(const char* bytes, std::size_t count) {
    if (!held_.Append(bytes, count)) {
        return false;
    }
    if (settings_.askForPageSize && !finder_.Found()) {
        finder_.Take({bytes, count});
    }
    return holdsWholePages_ || !finder_.Found() || Release();
}

bool DocumentSink::Release() {
    isThrough_ = true;
    const std::optional<Box> box = finder_.VisibleBox();
    const std::string feature = box ? PageSizeFeature(*box) : "";
    const std::uint64_t split = feature.empty() ? 0 : finder_.SetupOffset();
    const bool done =
        CopyHeld(0, split) && output_.Write(feature.data(), feature.size()) && CopyHeld(split, held_.Size());
    held_.Clear();
    return done;
}

bool DocumentSink::CopyHeld(std::uint64_t begin, std::uint64_t end) {
    return held_.Copy(begin, end,
                      [this](std::string_view part) { return output_.Write(part.data(), part.size()); });
}

void DocumentSink::KeepPage() {
    if (!isThrough_) {
        Release();
    }
}

void DocumentSink::DropPage() {
    if (isThrough_) {
        output_.TakeBackTo(pageStart_);
    }
    held_.Clear();
    isThrough_ = true;
}

void DocumentSink::ThrowIfFailed() const {
    output_.ThrowIfFailed();
    if (held_.Error() != 0) {
        ThrowOutputFailure("temporary file for a page", held_.Error());
    }
}

}  // namespace zorvan::cli
