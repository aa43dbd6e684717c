/*
 * The conversion library's interface: PDF files, and job tickets, to PostScript through eight functions.
 *
 * The library turns PDF files (first bytes "%PDF-") and portable job tickets ("%JTF-") into PostScript
 * that follows the Document Structuring Conventions 3.0 and runs on Language Level 3 devices. It never
 * writes a file: every byte leaves through the write callback, in the order in which it is produced.
 *
 * Calling order:
 *
 *     KAPRINE_Begin
 *       for each input file
 *         ZORVAN_OneFileBegin            header and prolog are written
 *         ZORVAN_GetTotalPages           (optional)
 *         ZORVAN_OutputGlobalResources   once, before the first page
 *         ZORVAN_OutputOnePage           once for each wanted page
 *         ZORVAN_OneFileEnd              trailer is written
 *       KAPRINE_GetErrInfo               at any time inside the job
 *     KAPRINE_End
 *
 * Threads: none. There is one job in a process, one open file in it and one calling thread; nothing is
 * locked. The callback runs on the caller's thread, inside the call that produces the output, and must
 * not call back into the library.
 *
 * Results: 0 is success; an error may be recorded all the same, when something of a page was left out and the
 * rest went on: ask KAPRINE_GetErrInfo before KAPRINE_End. It keeps the first error of a job, so a host that
 * wants to know about each file runs one job a file. Values from -4095 to -4068 are the library's own errors:
 * the first one of a job is kept and told by KAPRINE_GetErrInfo. -1 means that there is no job, that a job or
 * file is already open, that its object could not be allocated, or that a codec failed. Any other value is a
 * status of the host's own callback, handed back as it came and never recorded.
 *
 * No C++ exception leaves these functions, and the library neither prints, nor exits, nor touches signals.
 */
#ifndef ZORVAN_ZORVAN_H
#define ZORVAN_ZORVAN_H

#include "zorvan/calling.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Takes `count` bytes of PostScript; they are valid only during the call. The result 0 accepts them; any
 * other value refuses them: the operation in progress stops, calls back no more and returns that value.
 * The function must not throw.
 */
typedef int(ZORVAN_CALL* ZORVAN_WriteCallback)(const void* bytes, unsigned int count);

/* The password of an encrypted file: `length` bytes (40 at most) of `text`, which needs no final zero. */
typedef struct ZORVAN_PasswordRecord {
    char text[40];
    unsigned int length;
} ZORVAN_PasswordRecord;

/*
 * Begins the job of this process. `folder` is zero-terminated text, in the ANSI code page on Windows, with
 * its trailing separator: the codec library is loaded from `folder` followed directly by "Filter.dll".
 *
 * Results: 0; -4089 the codec library cannot be loaded; -4078 it lacks an entry point; -4088 out of
 * memory; -1 the job could not be allocated or a job is already open (which stays as it is). After every
 * result but -1 a job exists, and KAPRINE_End must be called.
 */
ZORVAN_EXPORT int ZORVAN_CALL KAPRINE_Begin(const char* folder);

/*
 * Ends the job and releases everything that it holds. A file that is still open is closed without its
 * trailer. Does nothing without a job.
 */
ZORVAN_EXPORT void ZORVAN_CALL KAPRINE_End(void);

/*
 * Tells the first error of the job. Result: its code, or 0 when none was recorded or there is no job (the
 * outputs are then left alone when there is no job). Later errors, those of later files included, do not
 * replace it.
 *
 *   message         the text, zero-terminated, UTF-8, in the user's language (English or Chinese)
 *   offset          file offset in bytes of the object involved; 0 when none is known
 *   excerpt         up to 69 bytes from the file or from the failing data; not zero-terminated
 *   excerpt_length  the number of bytes in `excerpt`
 *
 * The texts belong to the library and stay valid until the next error is recorded or the job ends. A null
 * pointer leaves that output out.
 */
ZORVAN_EXPORT int ZORVAN_CALL KAPRINE_GetErrInfo(const char** message, unsigned int* offset,
                                                 const unsigned char** excerpt, unsigned int* excerpt_length);

/*
 * Opens one input file and writes the header and the prolog. `path` is zero-terminated text of at most
 * 259 bytes, in the ANSI code page on Windows; `password` may be null. Both are copied.
 *
 * Results: 0; a status of the callback; -1 no job, or a file is already open (which stays as it is);
 * -4069 neither "%PDF-" nor "%JTF-" or no end marker; -4086 the file cannot be opened or mapped, is 4 GiB
 * or larger, or than what is free in one piece of the process's addresses (in 32 bits some 500 MB or more, by
 * the system and the host), is being written on Windows, or the path is too long; -4095 the catalog is no
 * dictionary, or its cross-reference section is none (a stream, as of PDF 1.5); -4091 and -4068 encryption
 * that is not supported, or a wrong password; -4087 the prolog cannot be found; -4085 no callback; -4088 out
 * of memory.
 *
 * When opening fails no file is left open. When only writing the header or the prolog fails the file
 * stays open: call ZORVAN_OneFileEnd, which still writes the trailer.
 */
ZORVAN_EXPORT int ZORVAN_CALL ZORVAN_OneFileBegin(const char* path, ZORVAN_WriteCallback callback,
                                                  const ZORVAN_PasswordRecord* password);

/* Result: the number of pages of the open file, 0 without one. */
ZORVAN_EXPORT int ZORVAN_CALL ZORVAN_GetTotalPages(void);

/*
 * Writes the resources that several pages share and closes the setup section. Call it once, before the
 * first page. Results: 0 (also without a file), a library error, or a status of the callback.
 */
ZORVAN_EXPORT int ZORVAN_CALL ZORVAN_OutputGlobalResources(void);

/*
 * Writes one page; `page` counts from 1 in document order. Pages may be written in any order. A page that
 * is written twice in one job lacks, the second time, what is written only once for the file (colour
 * spaces that belong to this page alone): write each page once.
 *
 * Results: 0 (also without a file, and for a page number outside the document, when nothing is written),
 * a library error, or a status of the callback. After any result but 0 the page is incomplete: the
 * device's memory is not restored and "showpage" is missing, so the output of this page must be dropped.
 */
ZORVAN_EXPORT int ZORVAN_CALL ZORVAN_OutputOnePage(unsigned int page);

/*
 * Writes the trailer (its status is not told) and closes the file. Does nothing without a file. The trailer
 * is written whatever became of the pages: who keeps no track of them and drops none that failed must throw
 * the whole document away.
 */
ZORVAN_EXPORT void ZORVAN_CALL ZORVAN_OneFileEnd(void);

#ifdef __cplusplus
}
#endif

#endif
