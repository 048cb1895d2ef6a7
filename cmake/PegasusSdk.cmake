# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT

# The target `cim` as the public headers and libraries of the OpenPegasus SDK that is installed
# under PEGASUS_ROOT, in place of our own cim/.

find_path(PEGASUS_INCLUDE_DIR Pegasus/Provider/CIMInstanceProvider.h
  HINTS "${PEGASUS_ROOT}/include" NO_DEFAULT_PATH)
find_library(PEGASUS_COMMON_LIBRARY pegcommon
  HINTS "${PEGASUS_ROOT}/lib" "${PEGASUS_ROOT}/lib64" NO_DEFAULT_PATH)
find_library(PEGASUS_PROVIDER_LIBRARY pegprovider
  HINTS "${PEGASUS_ROOT}/lib" "${PEGASUS_ROOT}/lib64" NO_DEFAULT_PATH)
foreach(part PEGASUS_INCLUDE_DIR PEGASUS_COMMON_LIBRARY PEGASUS_PROVIDER_LIBRARY)
  if(NOT ${part})
    message(FATAL_ERROR
      "PEGASUS_ROOT=${PEGASUS_ROOT} holds no whole OpenPegasus SDK (${part} was not found). It must "
      "hold include/Pegasus/{Common,Provider} and lib/libpeg{common,provider}.so; leave "
      "PEGASUS_ROOT empty to build against our own cim/.")
  endif()
endforeach()

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(pegasus_platform PEGASUS_PLATFORM_LINUX_X86_64_GNU)
else()
  set(pegasus_platform PEGASUS_PLATFORM_LINUX_IX86_GNU)
endif()

add_library(cim INTERFACE)
target_include_directories(cim SYSTEM INTERFACE "${PEGASUS_INCLUDE_DIR}")
target_compile_definitions(cim INTERFACE ${pegasus_platform} THREAD_SAFE _REENTRANT)
target_link_libraries(cim INTERFACE "${PEGASUS_PROVIDER_LIBRARY}" "${PEGASUS_COMMON_LIBRARY}")
