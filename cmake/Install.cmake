# What an installed copy holds. Runtime: the libraries, the desktop's module and the host, which work alone.
# Development: what it takes to build against them, by find_package or by pkg-config.
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

# The copy may be moved: pkg-config tells the file where it lies.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pkgconfig /${pkgconfig_dir} /)
configure_file(${PROJECT_SOURCE_DIR}/cmake/ZevrinUtils.pc.in ${PROJECT_BINARY_DIR}/ZevrinUtils.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ZevrinUtils.pc DESTINATION ${pkgconfig_dir} COMPONENT Development)

# An installed Linux program finds the libraries of its own copy.
if(NOT WIN32)
  file(RELATIVE_PATH lib_from_bin /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(zvu PROPERTIES INSTALL_RPATH $ORIGIN/${lib_from_bin})
  set_target_properties(ZevrinUtils PROPERTIES INSTALL_RPATH $ORIGIN)
endif()

# Whose code is in the files: header libraries of Debian's, and on Windows the compiler's run time beside them.
set(others libspdlog-dev libfmt-dev libcli11-dev)
if(WIN32)
  string(REGEX REPLACE "-w64-.*" "" processor ${ZEVRIN_TRIPLE})   # as Debian's packages spell it
  string(REPLACE _ - processor ${processor})
  list(APPEND others gcc-mingw-w64-${processor}-posix-runtime mingw-w64-${processor}-dev)
endif()
file(READ ${PROJECT_SOURCE_DIR}/cmake/copyright.txt copyright)
foreach(package ${others})
  file(READ /usr/share/doc/${package}/copyright text)
  string(APPEND copyright "\n\n======== ${package} ========\n\n${text}")
endforeach()
file(WRITE ${PROJECT_BINARY_DIR}/copyright "${copyright}")

# The texts: in the zip at the top; on Linux where Debian's packages have them, and packed as there.
if(WIN32)
  set(texts .)
  install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION . COMPONENT Runtime)
  install(FILES ${PROJECT_BINARY_DIR}/copyright DESTINATION . COMPONENT Runtime RENAME LICENSES.txt)
else()
  function(zevrin_install_packed file name folder component)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    execute_process(COMMAND gzip -9nc ${file} OUTPUT_FILE ${PROJECT_BINARY_DIR}/${name}.gz COMMAND_ERROR_IS_FATAL ANY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.gz DESTINATION ${folder} COMPONENT ${component})
  endfunction()
  foreach(component Runtime Development)
    set(texts ${CMAKE_INSTALL_DATADIR}/doc/${ZEVRIN_DEBIAN_${component}})
    zevrin_install_packed(${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog ${texts} ${component})
    zevrin_install_packed(${PROJECT_BINARY_DIR}/changelog.Debian changelog.Debian ${texts} ${component})
    install(FILES ${PROJECT_BINARY_DIR}/copyright DESTINATION ${texts} COMPONENT ${component})
  endforeach()
  zevrin_install_packed(${PROJECT_SOURCE_DIR}/hosts/zvu/zvu.1 zvu.1 ${CMAKE_INSTALL_MANDIR}/man1 Runtime)
  install(FILES ${PROJECT_SOURCE_DIR}/hosts/zvu/zvu.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT Runtime RENAME zvu)
endif()
install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION ${texts} COMPONENT Development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${texts} COMPONENT Development
  FILES_MATCHING PATTERN *.md PATTERN *.png)
