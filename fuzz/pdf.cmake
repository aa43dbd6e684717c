# The reader: its scanner, its object parser, its cross-reference sections, and whole files from the header to the last
# page.
foreach(target pdf_lexer pdf_object pdf_xref pdf_file)
  zorvan_fuzz_target(${target} SOURCES ${PROJECT_SOURCE_DIR}/fuzz/${target}.cpp LIBRARIES zorvan_core)
  zorvan_fuzz_job(${target})
endforeach()
