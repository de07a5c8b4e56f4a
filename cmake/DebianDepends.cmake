# CPack runs this before it packs: what the built files need, as dpkg-shlibdeps finds it. What only the desktop's module
# needs is recommended: without it the library works and has no windows.
file(MAKE_DIRECTORY ${CPACK_ZEVRIN_BINARY_DIR}/DEBIAN)   # by which it takes the build tree for the package
execute_process(
  COMMAND dpkg-shlibdeps -O -llib -Ldebian/shlibs -x${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME}
    -dRecommends -e./lib/zevrinutils/libZevrinDesktop.so
    -dDepends -e./lib/libZevrinUtils.so -e./lib/libFendrel.so -e./bin/zvu
  WORKING_DIRECTORY ${CPACK_ZEVRIN_BINARY_DIR} OUTPUT_VARIABLE needs COMMAND_ERROR_IS_FATAL ANY)
foreach(field Depends Recommends)
  string(REGEX MATCH "shlibs:${field}=([^\n]*)" found "${needs}")
  string(TOUPPER CPACK_DEBIAN_RUNTIME_PACKAGE_${field} variable)
  set(${variable} "${CMAKE_MATCH_1}")
endforeach()
# Whom TLS trusts, and what opens the mail client.
string(APPEND CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS ", ca-certificates, xdg-utils")
