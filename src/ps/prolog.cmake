# Stores the prolog: PROLOG_DATA_CPP is the source that holds its bytes, PROLOG_DATA_DIR the folder with one file a resource.
# Both stand in the including folder's own part of the build tree, for a generated file is known in its own folder only.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(PROLOG_DATA_DIR ${CMAKE_CURRENT_BINARY_DIR}/prolog)
set(PROLOG_DATA_CPP ${PROLOG_DATA_DIR}/prolog_data.cpp)
set(prolog_store ${CMAKE_CURRENT_LIST_DIR}/../../cmake/store_prolog.py)
file(GLOB prolog_sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/prolog/*.ps)

add_custom_command(
  OUTPUT ${PROLOG_DATA_CPP}
  COMMAND ${Python3_EXECUTABLE} ${prolog_store} ${CMAKE_CURRENT_LIST_DIR}/prolog ${PROLOG_DATA_DIR}
  DEPENDS ${prolog_store} ${prolog_sources}
  COMMENT "Storing the prolog"
  VERBATIM)
