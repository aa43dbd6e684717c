// Keeps each page's box, the fonts and the count of bytes, nothing else.
#include "cli/info_sink.h"

namespace zorvan::cli {

void InfoSink::BeginPage(unsigned page) {
    page_ = page;
    pageStart_ = bytes_;
    isInPage_ = true;
    finder_ = PageBoxFinder();
    fonts_.BeginPage();
}

void InfoSink::KeepPage() {
    pages_.push_back({page_, finder_.VisibleBox()});
    fonts_.KeepPage();
    isInPage_ = false;
}

void InfoSink::DropPage() {
    bytes_ = pageStart_;
    fonts_.DropPage();
    isInPage_ = false;
}

}  // namespace zorvan::cli
