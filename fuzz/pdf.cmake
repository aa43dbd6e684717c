# The reader: its scanner, its object parser, and whole files from the header to the last page.
foreach(target pdf_lexer pdf_object pdf_file)
  zorvan_fuzz_target(${target} SOURCES ${PROJECT_SOURCE_DIR}/fuzz/${target}.cpp LIBRARIES zorvan_core)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
  target_compile_definitions(${target} PRIVATE FILTER_FOLDER="$<TARGET_FILE_DIR:Filter>/")
  add_dependencies(${target} Filter)
endforeach()
