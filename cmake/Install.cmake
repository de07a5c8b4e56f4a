# What an installed copy holds: the libraries, the host, the headers and a package for find_package.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZevrinUtils)

install(TARGETS ZevrinUtils Fendrel EXPORT ZevrinUtilsTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
install(TARGETS zvu RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime)

foreach(folder ${ZEVRIN_PUBLIC_INCLUDE})
  install(DIRECTORY ${folder}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development)
endforeach()
if(WIN32)
  install(FILES ${ZEVRIN_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime)
endif()

install(EXPORT ZevrinUtilsTargets NAMESPACE ZevrinUtils:: DESTINATION ${package_dir} COMPONENT Development)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZevrinUtilsConfig.cmake.in
  ${PROJECT_BINARY_DIR}/ZevrinUtilsConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZevrinUtilsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZevrinUtilsConfig.cmake ${PROJECT_BINARY_DIR}/ZevrinUtilsConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT Development)

# An installed Linux program finds the libraries of its own copy.
if(NOT WIN32)
  file(RELATIVE_PATH lib_from_bin /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(zvu PROPERTIES INSTALL_RPATH $ORIGIN/${lib_from_bin})
  set_target_properties(ZevrinUtils PROPERTIES INSTALL_RPATH $ORIGIN)
endif()
