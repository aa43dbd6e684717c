# One target for each decoder, all of one source but that with parameters.
function(filter_fuzz_target name code)
  zorvan_fuzz_target(${name}
    SOURCES ${PROJECT_SOURCE_DIR}/fuzz/filter_decoder.cpp ${PROJECT_SOURCE_DIR}/tests/filter/codec_harness.cpp
    LIBRARIES filter_codecs)
  target_compile_definitions(${name} PRIVATE FILTER_CODE=${code})
endfunction()

filter_fuzz_target(filter_flate FILTER_DECODE_FLATE)
filter_fuzz_target(filter_lzw FILTER_DECODE_LZW)
filter_fuzz_target(filter_runlength FILTER_DECODE_RUNLENGTH)
filter_fuzz_target(filter_ascii85 FILTER_DECODE_ASCII85)
filter_fuzz_target(filter_asciihex FILTER_DECODE_ASCIIHEX)
filter_fuzz_target(filter_dct FILTER_DECODE_DCT)

zorvan_fuzz_target(filter_ccitt
  SOURCES ${PROJECT_SOURCE_DIR}/fuzz/filter_ccitt.cpp ${PROJECT_SOURCE_DIR}/tests/filter/codec_harness.cpp
  LIBRARIES filter_codecs)
