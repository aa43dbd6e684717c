// Keeps each page's box and the count of bytes, nothing else.
#include "cli/info_sink.h"

namespace zorvan::cli {

void InfoSink::BeginPage(unsigned page) {
    page_ = page;
    pageStart_ = bytes_;
    isInPage_ = true;
    finder_ = PageBoxFinder();
}

void InfoSink::KeepPage() {
    pages_.push_back({page_, finder_.VisibleBox()});
    isInPage_ = false;
}

void InfoSink::DropPage() {
    bytes_ = pageStart_;
    isInPage_ = false;
}

}  // namespace zorvan::cli
