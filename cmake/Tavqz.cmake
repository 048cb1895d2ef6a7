# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT

# What every target of ours is built with, and the functions that declare one.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/archive")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

set(TAVQZ_SANITIZE "" CACHE STRING "Sanitizers to build with, as for -fsanitize=")

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
  set(CMAKE_C_COMPILER_LAUNCHER "${CCACHE}")
endif()

add_library(tavqz_options INTERFACE)
if(TAVQZ_FUZZ)
  # What a fuzz target reaches in our libraries guides it.
  target_compile_options(tavqz_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
target_compile_options(tavqz_options INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Werror)
target_compile_definitions(tavqz_options INTERFACE
  _GNU_SOURCE
  # 64-bit file sizes and times on 32-bit machines too.
  _FILE_OFFSET_BITS=64
  $<$<EQUAL:${CMAKE_SIZEOF_VOID_P},4>:_TIME_BITS=64>)
if(TAVQZ_SANITIZE)
  target_compile_options(tavqz_options INTERFACE
    -fsanitize=${TAVQZ_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(tavqz_options INTERFACE -fsanitize=${TAVQZ_SANITIZE})
endif()

# tavqz_library(NAME [SHARED|MODULE|STATIC] SOURCES file... [PUBLIC lib...] [PRIVATE lib...])
#
# A library of the current folder, whose headers are found by those that link to it.
function(tavqz_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "SHARED;MODULE;STATIC" "" "SOURCES;PUBLIC;PRIVATE")
  set(kind STATIC)
  if(arg_SHARED)
    set(kind SHARED)
  elseif(arg_MODULE)
    set(kind MODULE)
  endif()
  add_library(${name} ${kind} ${arg_SOURCES})
  target_include_directories(${name} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE tavqz_options ${arg_PRIVATE})
endfunction()

# tavqz_installed(TARGET FOLDER): finds libraries in that folder beside its own, as it is installed
# and as it was built. What CMake writes for the build alone names the working folder as well, where
# anybody may have put a library; a build for another kind of machine needs it all the same.
function(tavqz_installed target folder)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "${folder}")
  if(NOT CMAKE_TOOLCHAIN_FILE)
    set_target_properties(${target} PROPERTIES BUILD_WITH_INSTALL_RPATH ON)
  endif()
endfunction()

# tavqz_executable(NAME SOURCES file... [LINK lib...])
function(tavqz_executable name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE tavqz_options ${arg_LINK})
endfunction()
