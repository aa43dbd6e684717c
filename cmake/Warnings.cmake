# zorvan_warnings(TARGET): the warnings that everything of ours is compiled with; each is an error.
function(zorvan_warnings target)
  set(flags -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wformat=2 -Werror)
  # g++ 12 warns about memory regions that overlap inside std::string's own concatenation (GCC bug 105651).
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    list(APPEND flags -Wno-restrict)
  endif()
  target_compile_options(${target} PRIVATE ${flags} $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor>)
endfunction()
