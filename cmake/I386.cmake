# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT

# 32-bit x86 on a 64-bit Debian: its compiler with -m32, and the libraries that script/i386-libraries
# unpacked. Programs run here, so this is no cross compilation.
set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)
set(CMAKE_C_FLAGS_INIT -m32)
set(CMAKE_CXX_FLAGS_INIT -m32)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)

if("$ENV{XDG_CACHE_HOME}" STREQUAL "")
  set(i386_root "$ENV{HOME}/.cache/tavqz-i386")
else()
  set(i386_root "$ENV{XDG_CACHE_HOME}/tavqz-i386")
endif()
list(PREPEND CMAKE_PREFIX_PATH "${i386_root}/usr")
# Where headers of one architecture lie; the compiler knows only the machine's own.
foreach(language C CXX)
  set(CMAKE_${language}_STANDARD_INCLUDE_DIRECTORIES
      "${i386_root}/usr/include/${CMAKE_LIBRARY_ARCHITECTURE}")
endforeach()
# What a library needs itself is searched where its user's libraries are.
set(libraries "${i386_root}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}")
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-Wl,--disable-new-dtags -Wl,-rpath-link,${libraries}")
endforeach()
# Where programs that are built find what they load themselves.
set(CMAKE_BUILD_RPATH "${libraries}")
