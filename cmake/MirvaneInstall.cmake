# What `cmake --install` adds to the targets: the CMake package MirvaneOcsp and the pkg-config file mirvane-ocsp. Both
# find their files from their own place, so that an installed tree can be moved.
include(CMakePackageConfigHelpers)

install(TARGETS mirvane-ocsp mirvane-platform EXPORT MirvaneOcsp FILE_SET HEADERS)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/MirvaneOcsp)
install(EXPORT MirvaneOcsp FILE MirvaneOcspConfig.cmake NAMESPACE Mirvane:: DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MirvaneOcspConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/MirvaneOcspConfigVersion.cmake DESTINATION ${package_folder})

# From the folder of the pkg-config file; folders that were given as absolute paths stay what they are.
function(mirvane_from_pkgconfig_folder variable folder)
  if(IS_ABSOLUTE ${folder})
    set(${variable} ${folder} PARENT_SCOPE)
  else()
    file(RELATIVE_PATH relative /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix/${folder})
    set(${variable} "\${pcfiledir}/${relative}" PARENT_SCOPE)
  endif()
endfunction()
mirvane_from_pkgconfig_folder(pkgconfig_include_folder ${CMAKE_INSTALL_INCLUDEDIR})
mirvane_from_pkgconfig_folder(pkgconfig_library_folder ${CMAKE_INSTALL_LIBDIR})
set(pkgconfig_platform "-lmirvane-platform")
if(TARGET "${MIRVANE_PLATFORM}")
  set(pkgconfig_platform "")
elseif(MIRVANE_PLATFORM)
  set(pkgconfig_platform ${MIRVANE_PLATFORM})
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/mirvane-ocsp.pc.in ${PROJECT_BINARY_DIR}/mirvane-ocsp.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/mirvane-ocsp.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
