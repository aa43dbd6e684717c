# zorvan_warnings(TARGET): the warnings that everything of ours is compiled with; each is an error.
function(zorvan_warnings target)
  set(flags -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wformat=2 -Werror)
  target_compile_options(${target} PRIVATE ${flags} $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor>)
endfunction()
