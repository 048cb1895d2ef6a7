# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT

# Programs and libraries in a folder of their own, with bin/, libexec/, lib/ and share/ as the build
# has them: nobody else links to these libraries.
set(home lib/tavqz)
install(TARGETS tavqz DESTINATION ${home}/bin)
install(TARGETS tavqz_network DESTINATION ${home}/libexec)
install(TARGETS cim LIBRARY DESTINATION ${home}/lib NAMELINK_SKIP)
install(TARGETS AssetIDProvider TavqzRaidProvider xen_probe LIBRARY DESTINATION ${home}/lib)
tavqz_installed(AssetIDProvider "$ORIGIN")
tavqz_installed(TavqzRaidProvider "$ORIGIN")
# One of the service-processor libraries that the machine has: update-alternatives links it to lib/.
install(TARGETS bmc_device LIBRARY DESTINATION ${home}/lib/bmc)
file(CREATE_LINK ../lib/tavqz/bin/tavqz "${CMAKE_CURRENT_BINARY_DIR}/tavqz" SYMBOLIC)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/tavqz" DESTINATION bin)
file(CREATE_LINK ../../share "${CMAKE_CURRENT_BINARY_DIR}/share" SYMBOLIC)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/share" DESTINATION ${home})

install(FILES debian/tavqz.service DESTINATION /lib/systemd/system)
install(FILES debian/60-tavqz.rules DESTINATION /lib/udev/rules.d)
install(FILES debian/pam DESTINATION /etc/pam.d RENAME tavqz)
install(FILES debian/serve.conf DESTINATION /etc/tavqz)
install(FILES debian/copyright DESTINATION share/doc/tavqz)
installed_gzip("${CMAKE_CURRENT_SOURCE_DIR}/debian/changelog" share/doc/tavqz)

set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "adduser, libicu${icu_version}, libpam-runtime")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "Who owns the machine and where it stands, its lease and warranty, and
the serial numbers of its parts: a provider module, a small CIM server
that loads it, and a command that asks either.")
foreach(script postinst prerm postrm conffiles)
  list(APPEND CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_SOURCE_DIR}/debian/${script}")
endforeach()
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
