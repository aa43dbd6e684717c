# The exported functions: whole files through them.

# The first seeds are made from templates: those of the goldens, which use every kind of resource, and broken ones.
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
  SEEDS ${expanded_seeds} ${PROJECT_SOURCE_DIR}/fuzz/seeds/pdf_file)
zorvan_fuzz_job(whole_file)
add_dependencies(whole_file expanded_seeds)
