# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

# Makes CMake on Debian take the project's macOS branches: clang with libc++, Objective-C++ under ARC against GNUstep's
# headers, bundles. What comes out is compiled in earnest, but for this machine; programs are not linked.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 22)
set(CMAKE_SYSTEM_PROCESSOR ${CMAKE_HOST_SYSTEM_PROCESSOR})
set(CMAKE_OSX_SYSROOT "" CACHE STRING "")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

# Another release of LLVM than the usual one: its compiler, and a folder with its libc++ (/usr/lib/llvm-19).
set(VANTELO_MACOS_LLVM 19 CACHE STRING "Release of clang that stands for Apple's")
set(VANTELO_MACOS_LIBCXX "" CACHE PATH "Where that libc++ is unpacked, if not installed")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VANTELO_MACOS_LLVM VANTELO_MACOS_LIBCXX)
find_program(CMAKE_CXX_COMPILER clang++-${VANTELO_MACOS_LLVM} REQUIRED)
find_program(CMAKE_OBJCXX_COMPILER clang++-${VANTELO_MACOS_LLVM} REQUIRED)
set(CMAKE_INSTALL_NAME_TOOL /usr/bin/true) # CMake asks for one; nothing is installed
execute_process(
    COMMAND g++ -print-multiarch OUTPUT_VARIABLE CMAKE_LIBRARY_ARCHITECTURE OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)

set(libcxx -stdlib=libc++)
if(VANTELO_MACOS_LIBCXX)
    list(APPEND libcxx -nostdinc++ -isystem ${VANTELO_MACOS_LIBCXX}/include/c++/v1)
endif()
# Next to this file are the C headers of Apple's, and what GNUstep's lack.
string(JOIN " " CMAKE_CXX_FLAGS_INIT ${libcxx} -Qunused-arguments -isystem ${CMAKE_CURRENT_LIST_DIR})
# GNUstep declares every method of a delegate as required; Apple made them optional.
string(JOIN " " CMAKE_OBJCXX_FLAGS_INIT
    ${CMAKE_CXX_FLAGS_INIT} -fobjc-runtime=gnustep-2.0 -fblocks -Wno-protocol -isystem /usr/include/GNUstep
    -isystem /usr/include/${CMAKE_LIBRARY_ARCHITECTURE}/GNUstep -include NewerAppKit.h)

set(CMAKE_PROJECT_INCLUDE ${CMAKE_CURRENT_LIST_DIR}/after_project.cmake)
