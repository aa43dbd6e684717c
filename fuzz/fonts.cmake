# The font parsers, which take bytes and need no job.
foreach(target font_true_type font_compact font_type1)
  zorvan_fuzz_target(${target} SOURCES ${PROJECT_SOURCE_DIR}/fuzz/${target}.cpp LIBRARIES zorvan_core)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
endforeach()

# Composite fonts, whose parts are written on the way of a whole page.
foreach(target font_cmap font_cid)
  zorvan_fuzz_target(${target}
    SOURCES ${PROJECT_SOURCE_DIR}/fuzz/${target}.cpp ${PROJECT_SOURCE_DIR}/tests/support/pdf_builder.cpp
    LIBRARIES zorvan_core)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  zorvan_fuzz_job(${target})
endforeach()
