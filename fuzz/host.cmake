# The exported functions: whole files through them, and any order of them.

# The first seeds are made from templates: those of the visual tests and of the goldens, which use every kind of
# resource, and broken ones.
if(NOT TARGET test_pdfs)
  add_subdirectory(${PROJECT_SOURCE_DIR}/tests/templates ${PROJECT_BINARY_DIR}/tests/templates)
endif()
set(expanded_seeds ${PROJECT_BINARY_DIR}/seeds/whole_file)
file(MAKE_DIRECTORY ${expanded_seeds})
file(GLOB templates CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/golden/*/input.in ${PROJECT_SOURCE_DIR}/fuzz/templates/*.in)
file(GLOB included CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/templates/*.inc)
set(expander ${PROJECT_SOURCE_DIR}/tests/tools/expand_pdf.py)
foreach(template ${templates})
  get_filename_component(name ${template} NAME_WE)
  if(name STREQUAL "input")
    get_filename_component(folder ${template} DIRECTORY)
    get_filename_component(name ${folder} NAME)
  endif()
  add_custom_command(
    OUTPUT ${expanded_seeds}/${name}
    COMMAND ${ZORVAN_PYTHON} ${expander} ${template} ${expanded_seeds}/${name}
    DEPENDS ${template} ${included} ${expander} ${PROJECT_SOURCE_DIR}/tests/tools/font_programs.py
    COMMENT "Expanding the seed ${name}"
    VERBATIM)
  list(APPEND seeds ${expanded_seeds}/${name})
endforeach()
add_custom_target(expanded_seeds DEPENDS ${seeds})

zorvan_fuzz_target(whole_file SOURCES ${PROJECT_SOURCE_DIR}/fuzz/whole_file.cpp LIBRARIES zorvan_core
  SEEDS ${expanded_seeds} ${PROJECT_BINARY_DIR}/pdfs ${PROJECT_SOURCE_DIR}/fuzz/seeds/pdf_file)
zorvan_fuzz_target(call_order SOURCES ${PROJECT_SOURCE_DIR}/fuzz/call_order.cpp LIBRARIES zorvan_core)
foreach(target whole_file call_order)
  zorvan_fuzz_job(${target})
  target_compile_definitions(${target} PRIVATE
    SEEDS="${PROJECT_SOURCE_DIR}/fuzz/seeds" EXPANDED_SEEDS="${expanded_seeds}")
  add_dependencies(${target} expanded_seeds test_pdfs)
endforeach()
