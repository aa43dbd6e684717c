/* How functions are exported and called: one place for the library's and the codec library's headers. */
#ifndef ZORVAN_CALLING_H
#define ZORVAN_CALLING_H

#if defined(_WIN32)
#define ZORVAN_CALL __stdcall
#define ZORVAN_EXPORT
#else
#define ZORVAN_CALL
#define ZORVAN_EXPORT __attribute__((visibility("default")))
#endif

#endif
