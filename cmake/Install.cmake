# What an installation holds, and the Debian package that brings it.
#
#   bin/tarni                      the tool
#   lib/tarni/                     what it loads into programs, and Qt's generic plug-ins
#   lib/cmake/Tarni/               find_package(Tarni): Tarni::tarni-qt5 and Tarni::tarni-qt6
#   share/tarni/webscripts/        the page scripts
#   share/man, share/bash-completion, share/doc
set(agent lib/tarni)
set(agent_libraries tarni-qt5 tarni-qt6)

install(TARGETS tarni RUNTIME DESTINATION bin)
install(TARGETS tarni_launcher LIBRARY DESTINATION ${agent})
install(TARGETS ${agent_libraries} EXPORT TarniTargets LIBRARY DESTINATION ${agent})
foreach(major 5 6)
  install(TARGETS tarni-qt${major}-quick LIBRARY DESTINATION ${agent})
  install(TARGETS tarni-qt${major}-generic LIBRARY DESTINATION ${agent}/generic)
endforeach()
if(TARNI_WITH_PAGES)
  install(TARGETS tarni-qt5-webengine tarni-qt6-webengine LIBRARY DESTINATION ${agent})
  install(DIRECTORY "${TARNI_WEBSCRIPTS}/" DESTINATION share/tarni/webscripts)
endif()

include(CMakePackageConfigHelpers)
set(config "${CMAKE_BINARY_DIR}/cmake/TarniConfig.cmake")
configure_package_config_file("${CMAKE_SOURCE_DIR}/cmake/TarniConfig.cmake.in" "${config}"
  INSTALL_DESTINATION lib/cmake/Tarni)
write_basic_package_version_file("${CMAKE_BINARY_DIR}/cmake/TarniConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(EXPORT TarniTargets NAMESPACE Tarni:: DESTINATION lib/cmake/Tarni)
install(FILES "${config}" "${CMAKE_BINARY_DIR}/cmake/TarniConfigVersion.cmake"
  DESTINATION lib/cmake/Tarni)

set(reference "${CMAKE_BINARY_DIR}/share/reference")
add_custom_command(OUTPUT "${reference}/tarni.1" "${reference}/tarni"
  COMMAND "${CMAKE_COMMAND}" -E make_directory "${reference}"
  COMMAND tarni reference man > "${reference}/tarni.1"
  COMMAND tarni reference bash > "${reference}/tarni"
  DEPENDS tarni VERBATIM)
add_custom_target(tarni_reference ALL DEPENDS "${reference}/tarni.1" "${reference}/tarni")
install(FILES "${reference}/tarni.1" DESTINATION share/man/man1)
install(FILES "${reference}/tarni" DESTINATION share/bash-completion/completions)
install(FILES README.md DESTINATION share/doc/tarni)
install(DIRECTORY docs/ DESTINATION share/doc/tarni/docs)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarni)
set(CPACK_PACKAGE_CONTACT "The Tarni developers <tarni@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "in-app test automation for Qt programs")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
# A library is loaded only into a program that has the toolkit, so the package itself needs neither.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "libc6 (>= 2.36), libgcc-s1, libstdc++6 (>= 12), libturbojpeg0, libpng16-16, libcpp-httplib0.11, libpugixml1v5")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "gdb, iproute2, xvfb")
include(CPack)
