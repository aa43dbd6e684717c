/*
 * The codec library's interface: stream filters, both ways, behind eight entry points of "Filter.dll".
 *
 * The library is loaded at run time and its entry points are looked up by name, so this header declares
 * the function types as well as the functions. Every handle belongs to one caller; two handles may be used
 * side by side on one thread. Memory use is fixed for a handle, whatever the length of the data; a DCT
 * decoder's grows with the width of the picture, or, where a file has several scans, with the picture, which
 * is damaged to it beyond 256 MiB.
 *
 * Filter codes: even ones encode, odd ones decode.
 */
#ifndef ZORVAN_FILTER_H
#define ZORVAN_FILTER_H

#include "zorvan/calling.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    FILTER_ENCODE_DCT = 0,
    FILTER_DECODE_DCT = 1,
    FILTER_ENCODE_CCITTFAX = 2,
    FILTER_DECODE_CCITTFAX = 3,
    FILTER_ENCODE_FLATE = 4,
    FILTER_DECODE_FLATE = 5,
    FILTER_ENCODE_LZW = 6,
    FILTER_DECODE_LZW = 7,
    FILTER_ENCODE_RUNLENGTH = 8,
    FILTER_DECODE_RUNLENGTH = 9,
    FILTER_ENCODE_ASCII85 = 10,
    FILTER_DECODE_ASCII85 = 11,
    FILTER_ENCODE_ASCIIHEX = 12,
    FILTER_DECODE_ASCIIHEX = 13
};

/*
 * The parameter block of the CCITTFax codes; booleans are 0 or 1. See PDF Reference, CCITTFaxDecode. Without
 * a block the defaults hold: 0 each, but 1728 columns and end_of_block 1.
 *
 * Columns are 1 to FILTER_CCITT_MAXIMUM_COLUMNS and rows 0 or more; other numbers are unusable. A row of
 * plain data takes whole bytes; a decoder fills the last one with white. An encoder fills up a last row that
 * is not whole with white and does not read `rows`. With `k` above 0 and without end-of-line codes, which
 * would tell them, the first of every `k` rows is coded in one dimension.
 *
 * A decoder takes end-of-line codes wherever they are. Where they are, a damaged row of Group 3 data is
 * replaced by the row above it and all is well; other damage is told. Uncompressed mode counts as damage.
 */
typedef struct FilterCcittParameters {
    int k;
    int end_of_line;
    int encoded_byte_align;
    int columns;
    int rows;
    int end_of_block;
    int black_is_1;
} FilterCcittParameters;

enum { FILTER_CCITT_MAXIMUM_COLUMNS = 65535 };

/*
 * The parameter block of the DCT codes: 48 bytes. A decoder reads none of them: JPEG data tells of itself.
 * It delivers rows of samples of 8 bits, the components of a pixel side by side: 1 to 4. Three components
 * are converted from YCbCr to RGB and four from YCCK to CMYK as DCTDecode has it: as the transform of an
 * Adobe marker says; without one three are and four are not. CMYK is delivered as it is stored.
 *
 * An encoder needs the first three of the words below; without them, or without a block, there is none. It
 * takes exactly width x height x components samples for each piece of data (or none, which gives none), and
 * fails when there are more, or fewer at the end. Words that are not named are 0.
 */
typedef struct FilterDctParameters {
    unsigned int words[12];
} FilterDctParameters;

enum {
    FILTER_DCT_WIDTH = 0,      /* in pixels, 1 to 65500 */
    FILTER_DCT_HEIGHT = 1,     /* in pixels, 1 to 65500 */
    FILTER_DCT_COMPONENTS = 2, /* 1 gray, 3 RGB, 4 CMYK */
    FILTER_DCT_QUALITY = 3,    /* 1 to 100, 0 for 75 */
    FILTER_DCT_TRANSFORM = 4   /* 0 as a decoder assumes, 1 none, 2 RGB to YCbCr and CMYK to YCCK */
};

/*
 * Takes encoded bytes from an encoder. `slot` is the pointer given to CreateEncoder; `count` is above 0.
 * Stores the number of bytes taken. Result: 1 all were taken, 0 they were refused: the encoder then fails.
 */
typedef int(ZORVAN_CALL* FilterWriteFunction)(const int* slot, const void* bytes, unsigned int count,
                                              unsigned int* written);

/*
 * Hands encoded bytes to a decoder. `slot` is the pointer given to CreateDecoder. Stores the number of
 * bytes copied into `buffer`. Result: 1 all of `wanted` were delivered, 0 fewer, or none, were left: the
 * input ends there.
 */
typedef int(ZORVAN_CALL* FilterReadFunction)(const int* slot, void* buffer, unsigned int wanted,
                                             unsigned int* read);

/*
 * Makes an encoder for an even filter code. `parameters` is the block of that code or null. Result: the
 * handle, or null when the code is unknown, the parameters are unusable or memory is lacking.
 */
typedef void*(ZORVAN_CALL* CreateEncoderFunction)(unsigned int filter_code, const void* parameters,
                                                  const int* slot, FilterWriteFunction write);
/*
 * Encodes `count` bytes. What is encoded may stay in the encoder until the end of the data or `Flush`; but
 * the ASCIIHex encoder has handed on all digits of these bytes when it returns, so that the caller can write
 * digits of its own behind them. Result: 0, or -1 when the write function refused bytes (now or before).
 */
typedef int(ZORVAN_CALL* EncodeDataFunction)(void* encoder, const void* bytes, unsigned int count);
/*
 * Ends the encoded data, with the filter's own end-of-data mark where it has one ("~>", ">", 128, the LZW
 * and Flate ends), and hands all of it to the write function. The encoder can then encode another, separate
 * piece of data. Result: 0 or -1.
 */
typedef int(ZORVAN_CALL* EncodeEodFunction)(void* encoder);
/* Hands on what is encoded so far, without ending the data. Result: 0 or -1. */
typedef int(ZORVAN_CALL* FlushFunction)(void* encoder);
typedef void(ZORVAN_CALL* DestroyEncoderFunction)(void* encoder);

/*
 * Makes a decoder. The low eight bits of `filter_code` are an odd filter code; the bits above hold the
 * length of the encoded data, modulo 2^24, as far as it is known: a hint, no limit. Result: the handle, or
 * null when memory is lacking (or `read` is null). A decoder of an unknown code or with unusable parameters
 * is made, too: all data is damaged to it.
 */
typedef void*(ZORVAN_CALL* CreateDecoderFunction)(unsigned int filter_code, const void* parameters,
                                                  const int* slot, FilterReadFunction read);
/*
 * Decodes into `output`, whose size in bytes stands in `*size`; stores there how many bytes were decoded,
 * which may be 0 at the end and on failure. Data that is cut short is delivered as far as it goes, and its
 * end is an ordinary end.
 *
 * Result: 1 more may follow, 0 the end was reached (the bytes of this call are the last ones), -1 the
 * data is damaged (the bytes stored before the damage are valid; every later call is -1 with 0 bytes).
 */
typedef int(ZORVAN_CALL* DecodeDataFunction)(void* decoder, void* output, unsigned int* size);
typedef void(ZORVAN_CALL* DestroyDecoderFunction)(void* decoder);

ZORVAN_EXPORT void* ZORVAN_CALL CreateEncoder(unsigned int filter_code, const void* parameters,
                                              const int* slot, FilterWriteFunction write);
ZORVAN_EXPORT int ZORVAN_CALL EncodeData(void* encoder, const void* bytes, unsigned int count);
ZORVAN_EXPORT int ZORVAN_CALL Encode_EOD(void* encoder);
ZORVAN_EXPORT int ZORVAN_CALL Flush(void* encoder);
ZORVAN_EXPORT void ZORVAN_CALL DestroyEncoder(void* encoder);
ZORVAN_EXPORT void* ZORVAN_CALL CreateDecoder(unsigned int filter_code, const void* parameters,
                                              const int* slot, FilterReadFunction read);
ZORVAN_EXPORT int ZORVAN_CALL DecodeData(void* decoder, void* output, unsigned int* size);
ZORVAN_EXPORT void ZORVAN_CALL DestroyDecoder(void* decoder);

#ifdef __cplusplus
}
#endif

#endif
