# The font parsers, which take bytes and need no job.
foreach(target font_true_type font_compact font_type1)
  zorvan_fuzz_target(${target} SOURCES ${PROJECT_SOURCE_DIR}/fuzz/${target}.cpp LIBRARIES zorvan_core)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
endforeach()
