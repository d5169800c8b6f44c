# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT

# Makes CMake on Debian take the project's macOS branches: clang with libc++, Objective-C++ under ARC against GNUstep's
# headers, bundles. What comes out is compiled in earnest, but for this machine; programs are not linked.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 22)
set(CMAKE_SYSTEM_PROCESSOR ${CMAKE_HOST_SYSTEM_PROCESSOR})
set(CMAKE_OSX_SYSROOT "" CACHE STRING "")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

find_program(CMAKE_CXX_COMPILER clang++-19 REQUIRED)
find_program(CMAKE_OBJCXX_COMPILER clang++-19 REQUIRED)
set(CMAKE_INSTALL_NAME_TOOL /usr/bin/true) # CMake asks for one; nothing is installed
execute_process(
    COMMAND g++ -print-multiarch OUTPUT_VARIABLE CMAKE_LIBRARY_ARCHITECTURE OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)

set(CMAKE_CXX_FLAGS_INIT "-stdlib=libc++ -Qunused-arguments")
# GNUstep declares every method of a delegate as required; Apple made them optional.
string(JOIN " " CMAKE_OBJCXX_FLAGS_INIT
    ${CMAKE_CXX_FLAGS_INIT} -fobjc-runtime=gnustep-2.0 -fblocks -Wno-protocol
    -isystem ${CMAKE_CURRENT_LIST_DIR} -isystem /usr/include/GNUstep -include NewerAppKit.h)

set(CMAKE_PROJECT_INCLUDE ${CMAKE_CURRENT_LIST_DIR}/after_project.cmake)
