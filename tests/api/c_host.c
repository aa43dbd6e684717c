/* The two headers in a C89 program: this file is compiled as strictly as the compiler can. */
#include "c_host.h"

#include "zorvan/filter.h"
#include "zorvan/zorvan.h"

static int ZORVAN_CALL DropPiece(const void* bytes, unsigned int count) {
    return bytes == 0 && count != 0 ? 1 : 0;
}

static int ConvertPages(void) {
    int status = ZORVAN_OutputGlobalResources();
    int page;
    for (page = 1; status == 0 && page <= ZORVAN_GetTotalPages(); ++page) {
        status = ZORVAN_OutputOnePage((unsigned int)page);
    }
    return status == 0 ? page - 1 : status;
}

int ConvertFromC(const char* folder, const char* path) {
    CreateDecoderFunction notUsed = 0;
    ZORVAN_WriteCallback callback = DropPiece;
    int result = KAPRINE_Begin(folder);
    if (result == 0) {
        result = ZORVAN_OneFileBegin(path, callback, 0);
    }
    if (result == 0 && notUsed == 0) {
        result = ConvertPages();
    }
    ZORVAN_OneFileEnd();
    KAPRINE_End();
    return result;
}
