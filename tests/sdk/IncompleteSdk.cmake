# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
#
# cmake -DSOURCE=DIR -DWORK=DIR -P IncompleteSdk.cmake: configures the sources in SOURCE against SDKs
# that lack something, below WORK, and fails unless each refusal names what is missing.

file(REMOVE_RECURSE "${WORK}")
set(sdk "${WORK}/sdk")

# expect_refusal(TEXT...): configuring fails, with these texts.
function(expect_refusal)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -G Ninja -S "${SOURCE}" -B "${WORK}/build" "-DPEGASUS_ROOT=${sdk}"
            -DTAVQZ_TESTS=OFF
    RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE said)
  if(status EQUAL 0)
    message(SEND_ERROR "An SDK that lacks ${ARGN} is taken for a whole one")
  endif()
  string(REGEX REPLACE "[ \n]+" " " said "${said}")
  foreach(text ${ARGN} "tog-pegasus-devel")
    string(FIND "${said}" "${text}" at)
    if(at EQUAL -1)
      message(SEND_ERROR "\"${text}\" is not in: ${said}")
    endif()
  endforeach()
endfunction()

expect_refusal("PEGASUS_ROOT=${sdk} holds no whole OpenPegasus SDK"
  include/Pegasus/Common/String.h include/Pegasus/Provider/CIMInstanceProvider.h
  lib/libpegcommon.so lib/libpegprovider.so)

# Whole but for one header.
foreach(name Array CIMDateTime CIMInstance CIMName CIMObject CIMObjectPath CIMProperty
             CIMPropertyList CIMStatusCode CIMType CIMValue Config Exception ResponseHandler String)
  file(WRITE "${sdk}/include/Pegasus/Common/${name}.h" "")
endforeach()
foreach(name CIMIndicationProvider CIMInstanceProvider CIMOMHandle CIMProvider)
  file(WRITE "${sdk}/include/Pegasus/Provider/${name}.h" "")
endforeach()
file(WRITE "${sdk}/lib/libpegcommon.so" "")
file(WRITE "${sdk}/lib/libpegprovider.so" "")
expect_refusal("It lacks include/Pegasus/Common/OperationContext.h Install")
