// How libjpeg's failures come back: no exits, no messages, nothing thrown through its C functions.
#ifndef FILTER_DCT_ERRORS_H
#define FILTER_DCT_ERRORS_H

#include <csetjmp>
#include <cstddef>
#include <cstdio>

#include <jpeglib.h>

namespace zorvan::filter {

class DctErrors {
public:
    DctErrors() {
        jpeg_std_error(&manager_);
        manager_.error_exit = [](j_common_ptr codec) { std::longjmp(From(codec).jump_, 1); };
        manager_.emit_message = [](j_common_ptr, int) {};
        manager_.output_message = [](j_common_ptr) {};
    }

    jpeg_error_mgr* Manager() { return &manager_; }

    // Runs calls of libjpeg; false when one of them failed, which leaves `call` on the spot: it must hold
    // nothing that wants to be destroyed.
    template <typename Call>
    bool Attempt(Call call) {
        if (setjmp(jump_) != 0) {
            return false;
        }
        call();
        return true;
    }

private:
    // The manager is the first field, so that its address is the record's.
    static DctErrors& From(j_common_ptr codec) { return *reinterpret_cast<DctErrors*>(codec->err); }

    jpeg_error_mgr manager_{};
    std::jmp_buf jump_{};
};

}  // namespace zorvan::filter

#endif
