find_package(benchmark REQUIRED)
find_package(ZLIB REQUIRED)

add_executable(filter_bench
  ${PROJECT_SOURCE_DIR}/bench/filter_bench.cpp ${PROJECT_SOURCE_DIR}/tests/filter/codec_harness.cpp)
target_link_libraries(filter_bench PRIVATE filter_codecs ZLIB::ZLIB benchmark::benchmark)
zorvan_warnings(filter_bench)
