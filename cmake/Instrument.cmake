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

# zorvan_quick_to_build(): programs of this folder run for seconds, and are built for each kind of build anew. Their own code is
# not optimised, nor the core for each of them across files: that takes a quarter of a minute, and for Windows the linker
# cannot put objects with and without it into one program.
macro(zorvan_quick_to_build)
  add_compile_options(-O0)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_link_options(-fno-lto)
  endif()
endmacro()
