# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT

# The target `cim` as the public headers and libraries of the OpenPegasus SDK that is installed
# under PEGASUS_ROOT, in place of our own cim/. Sets PEGASUS_ROOT where that is to be found.

if(NOT PEGASUS_ROOT)
  set(pegasus_places "$ENV{PEGASUS_ROOT}" "$ENV{PEGASUS_HOME}" /usr /usr/local /opt/tog-pegasus)
  foreach(place ${pegasus_places})
    if(EXISTS "${place}/include/Pegasus")
      set(PEGASUS_ROOT "${place}")
      break()
    endif()
  endforeach()
  if(NOT PEGASUS_ROOT)
    list(REMOVE_ITEM pegasus_places "")
    list(JOIN pegasus_places ", " pegasus_places)
    message(FATAL_ERROR
      "There is no OpenPegasus SDK in any of ${pegasus_places}. Install one (tog-pegasus-devel), or "
      "name its folder with -DPEGASUS_ROOT=DIR.")
  endif()
  message(STATUS "OpenPegasus SDK: ${PEGASUS_ROOT}")
endif()

# All that we include: a header that is missing is told here, not by the compiler.
set(pegasus_missing)
set(pegasus_headers)
foreach(name Array CIMDateTime CIMInstance CIMName CIMObject CIMObjectPath CIMProperty
             CIMPropertyList CIMStatusCode CIMType CIMValue Config Exception OperationContext
             ResponseHandler String)
  list(APPEND pegasus_headers "include/Pegasus/Common/${name}.h")
endforeach()
foreach(name CIMIndicationProvider CIMInstanceProvider CIMOMHandle CIMProvider)
  list(APPEND pegasus_headers "include/Pegasus/Provider/${name}.h")
endforeach()
foreach(header ${pegasus_headers})
  if(NOT EXISTS "${PEGASUS_ROOT}/${header}")
    list(APPEND pegasus_missing "${header}")
  endif()
endforeach()
foreach(name common provider)
  string(TOUPPER ${name} upper)
  find_library(PEGASUS_${upper}_LIBRARY peg${name}
    HINTS "${PEGASUS_ROOT}" PATH_SUFFIXES lib lib64 lib/${CMAKE_LIBRARY_ARCHITECTURE}
    NO_DEFAULT_PATH)
  if(NOT PEGASUS_${upper}_LIBRARY)
    list(APPEND pegasus_missing "lib/libpeg${name}.so")
  endif()
endforeach()
if(pegasus_missing)
  list(JOIN pegasus_missing "\n  " pegasus_missing)
  message(FATAL_ERROR
    "PEGASUS_ROOT=${PEGASUS_ROOT} holds no whole OpenPegasus SDK. It lacks\n"
    "  ${pegasus_missing}\n"
    "Install the SDK of the server (tog-pegasus-devel), or configure without PEGASUS_ROOT to build "
    "against our own cim/.")
endif()

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(pegasus_platform PEGASUS_PLATFORM_LINUX_X86_64_GNU)
else()
  set(pegasus_platform PEGASUS_PLATFORM_LINUX_IX86_GNU)
endif()

add_library(cim INTERFACE)
target_include_directories(cim SYSTEM INTERFACE "${PEGASUS_ROOT}/include")
target_compile_definitions(cim INTERFACE ${pegasus_platform} THREAD_SAFE _REENTRANT)
target_link_libraries(cim INTERFACE "${PEGASUS_PROVIDER_LIBRARY}" "${PEGASUS_COMMON_LIBRARY}")
