// Where a conversion's PostScript goes, page by page.
#pragma once

#include <cstddef>

namespace zorvan::cli {

class PageSink {
public:
    PageSink() = default;
    PageSink(const PageSink&) = delete;
    PageSink& operator=(const PageSink&) = delete;
    virtual ~PageSink() = default;

    // Takes a piece; the answer false stops the conversion, and ThrowIfFailed tells why.
    virtual bool Take(const char* bytes, std::size_t count) = 0;
    // What follows, up to KeepPage or DropPage, is page `page`; what stands outside of the two is the
    // document's header, prolog, setup or trailer.
    virtual void BeginPage(unsigned page) = 0;
    virtual void KeepPage() = 0;
    virtual void DropPage() = 0;
    // Throws the Failure for the first write that the system refused.
    virtual void ThrowIfFailed() const = 0;
};

}  // namespace zorvan::cli
