/* A codec library that does nothing; with LACKS_<name> defined that entry point is missing. */
#include "zorvan/filter.h"

#ifndef LACKS_CreateEncoder
void* ZORVAN_CALL CreateEncoder(unsigned int filter_code, const void* parameters, const int* slot,
                                FilterWriteFunction write) {
    (void)filter_code, (void)parameters, (void)slot, (void)write;
    return 0;
}
#endif
#ifndef LACKS_EncodeData
int ZORVAN_CALL EncodeData(void* encoder, const void* bytes, unsigned int count) {
    (void)encoder, (void)bytes, (void)count;
    return -1;
}
#endif
#ifndef LACKS_Encode_EOD
int ZORVAN_CALL Encode_EOD(void* encoder) {
    return encoder == 0 ? 0 : -1;
}
#endif
#ifndef LACKS_Flush
int ZORVAN_CALL Flush(void* encoder) {
    return encoder == 0 ? 0 : -1;
}
#endif
#ifndef LACKS_DestroyEncoder
void ZORVAN_CALL DestroyEncoder(void* encoder) {
    (void)encoder;
}
#endif
#ifndef LACKS_CreateDecoder
void* ZORVAN_CALL CreateDecoder(unsigned int filter_code, const void* parameters, const int* slot,
                                FilterReadFunction read) {
    (void)filter_code, (void)parameters, (void)slot, (void)read;
    return 0;
}
#endif
#ifndef LACKS_DecodeData
int ZORVAN_CALL DecodeData(void* decoder, void* output, unsigned int* size) {
    (void)decoder, (void)output;
    *size = 0;
    return -1;
}
#endif
#ifndef LACKS_DestroyDecoder
void ZORVAN_CALL DestroyDecoder(void* decoder) {
    (void)decoder;
}
#endif
