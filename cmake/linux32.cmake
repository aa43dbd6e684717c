# 32-bit Linux on a 64-bit one: the code of the Windows build's word size, where the sanitizers run.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
# This machine's kernel runs what is built.
set(CMAKE_CROSSCOMPILING_EMULATOR "")

set(CMAKE_FIND_ROOT_PATH ${CMAKE_CURRENT_LIST_DIR}/../build/targets/linux32)
set(CMAKE_PREFIX_PATH ${CMAKE_CURRENT_LIST_DIR}/../build/targets/linux32)
set(CMAKE_SYSTEM_LIBRARY_PATH /usr/lib32)
set(FIND_LIBRARY_USE_LIB64_PATHS OFF)
set(FIND_LIBRARY_USE_LIB32_PATHS ON)

# Floats as a 64-bit build computes them: the old coprocessor's would show in the output's last digits.
set(CMAKE_C_FLAGS_INIT "-m32 -msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-m32 -msse2 -mfpmath=sse")
set(CMAKE_ASM_NASM_OBJECT_FORMAT elf32)
