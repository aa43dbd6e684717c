/* A host that knows nothing but the names of the eight functions: the library is loaded when it runs.
   loader_host ZORVAN.dll FOLDER-OF-FILTER.DLL\ FILE.pdf FILE.ps: converts, or prints code and message and
   ends with 1. */
#include <stdio.h>
#include <windows.h>

#include "zorvan/zorvan.h"

struct Library {
    int(ZORVAN_CALL* begin)(const char*);
    void(ZORVAN_CALL* end)(void);
    int(ZORVAN_CALL* getErrInfo)(const char**, unsigned int*, const unsigned char**, unsigned int*);
    int(ZORVAN_CALL* oneFileBegin)(const char*, ZORVAN_WriteCallback, const ZORVAN_PasswordRecord*);
    int(ZORVAN_CALL* getTotalPages)(void);
    int(ZORVAN_CALL* outputGlobalResources)(void);
    int(ZORVAN_CALL* outputOnePage)(unsigned int);
    void(ZORVAN_CALL* oneFileEnd)(void);
};

static FILE* output;

static int ZORVAN_CALL TakePiece(const void* bytes, unsigned int count) {
    return fwrite(bytes, 1, count, output) == count ? 0 : 1;
}

static int Load(struct Library* library, const char* path) {
    static const char* const names[] = {"KAPRINE_Begin",        "KAPRINE_End",
                                        "KAPRINE_GetErrInfo",   "ZORVAN_OneFileBegin",
                                        "ZORVAN_GetTotalPages", "ZORVAN_OutputGlobalResources",
                                        "ZORVAN_OutputOnePage", "ZORVAN_OneFileEnd"};
    FARPROC* function = (FARPROC*)library;
    const HMODULE module = LoadLibraryA(path);
    unsigned int i;
    for (i = 0; module != NULL && i < sizeof names / sizeof *names; ++i) {
        function[i] = GetProcAddress(module, names[i]);
        if (function[i] == NULL) {
            printf("%s is missing\n", names[i]);
            return 0;
        }
    }
    return module != NULL;
}

static int Convert(const struct Library* library, const char* folder, const char* path) {
    int status = library->begin(folder);
    unsigned int page;
    if (status == 0) {
        status = library->oneFileBegin(path, TakePiece, NULL);
    }
    if (status == 0) {
        status = library->outputGlobalResources();
    }
    for (page = 1; status == 0 && page <= (unsigned int)library->getTotalPages(); ++page) {
        status = library->outputOnePage(page);
    }
    library->oneFileEnd();
    return status;
}

int main(int argc, char** argv) {
    struct Library library;
    const char* message = "";
    int status;
    if (argc != 5 || !Load(&library, argv[1]) || (output = fopen(argv[4], "wb")) == NULL) {
        return 2;
    }
    status = Convert(&library, argv[2], argv[3]);
    if (status != 0) {
        library.getErrInfo(&message, NULL, NULL, NULL);
        printf("%d: %s\n", status, message);
    }
    library.end();
    return fclose(output) != 0 || status != 0;
}
