/* A host written in C. */
#ifndef ZORVAN_TESTS_API_C_HOST_H
#define ZORVAN_TESTS_API_C_HOST_H

#ifdef __cplusplus
extern "C" {
#endif

/* Converts a file and drops the output. Result: the number of pages, or the first failure's status. */
int ConvertFromC(const char* folder, const char* path);

#ifdef __cplusplus
}
#endif

#endif
