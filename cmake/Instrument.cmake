# Sanitizers and coverage are properties of a whole build, so they stand in one place for all targets.
if(ZORVAN_SANITIZE)
  add_compile_options(-fsanitize=${ZORVAN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZORVAN_SANITIZE})
endif()
if(ZORVAN_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()
# A fuzzer steers by what its input reaches: the libraries under it must report that, too.
if(ZORVAN_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
