# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT

set(TAVQZ_PROVIDER_DIR lib64/Pegasus/providers CACHE STRING
  "Where the package puts the module: the server's folder of providers, below /usr")

install(TARGETS tavqz DESTINATION bin)
foreach(module AssetIDProvider TavqzRaidProvider)
  install(TARGETS ${module} LIBRARY DESTINATION "${TAVQZ_PROVIDER_DIR}")
  # Some servers look for this name.
  file(CREATE_LINK lib${module}.so "${CMAKE_CURRENT_BINARY_DIR}/lib${module}.so.1" SYMBOLIC)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/lib${module}.so.1" DESTINATION "${TAVQZ_PROVIDER_DIR}")
endforeach()

# What the module loads itself, from "../lib/" of the folder that the server is started in.
set(TAVQZ_SERVER_HOME lib64/tavqz CACHE STRING
  "The parent of that folder, and of the libraries' own, below /usr")
install(TARGETS bmc_device xen_probe LIBRARY DESTINATION "${TAVQZ_SERVER_HOME}/lib")
install(DIRECTORY DESTINATION "${TAVQZ_SERVER_HOME}/run")
configure_file(rpm/tog-pegasus.conf "${CMAKE_CURRENT_BINARY_DIR}/tavqz.conf" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/tavqz.conf"
  DESTINATION lib/systemd/system/tog-pegasus.service.d)

set(CPACK_GENERATOR RPM)
set(CPACK_RPM_PACKAGE_NAME tavqz-provider)
set(CPACK_RPM_FILE_NAME RPM-DEFAULT)
# With SHA-256 of libmd linked in.
set(CPACK_RPM_PACKAGE_LICENSE "MIT AND BSD-3-Clause")
install(FILES debian/copyright DESTINATION share/doc/tavqz)
set(CPACK_RPM_PACKAGE_REQUIRES "tog-pegasus, libicuuc.so.${icu_version}")
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  string(APPEND CPACK_RPM_PACKAGE_REQUIRES "()(64bit)")
endif()
set(CPACK_RPM_POST_INSTALL_SCRIPT_FILE "${CMAKE_CURRENT_SOURCE_DIR}/rpm/post.sh")
set(CPACK_RPM_PRE_UNINSTALL_SCRIPT_FILE "${CMAKE_CURRENT_SOURCE_DIR}/rpm/preun.sh")
# Lest the files of two packages meet in a folder that neither needs.
set(CPACK_RPM_SPEC_MORE_DEFINE "%global _build_id_links none")
set(CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION
  /usr/lib/systemd /usr/lib/systemd/system /usr/lib64/Pegasus /usr/lib64/Pegasus/providers /usr/share/man /usr/share/man/man1)
