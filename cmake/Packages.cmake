# The packages that CPack makes: of the Windows target a zip that works wherever it is unpacked, of the Linux target a
# pair for Debian, which the preset 'debian' is for.
set(CPACK_PACKAGE_CONTACT "ZevrinUtils developers <developers@zevrinutils.example>")
set(CPACK_COMPONENTS_ALL Runtime Development)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-windows-${ZEVRIN_WINDOWS})
  include(CPack)
  return()
endif()

set(ZEVRIN_DEBIAN_Runtime libzevrinutils${PROJECT_VERSION_MAJOR})
set(ZEVRIN_DEBIAN_Development libzevrinutils-dev)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")   # each has a synopsis of its own
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE zevrinutils)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${ZEVRIN_DEBIAN_Runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "utility library of a desktop server product
Names of addresses that nobody waits for, TCP ports, an HTTP client,
parameters in a registry, folders and their access rights, SQL scripts,
Base64, passwords and GUIDs, mail and a folder picker, each a class of its
own.

Its trace service Fendrel and the command-line host zvu come with it. The
windows need GTK 3, the mail xdg-utils; without them the rest works.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${ZEVRIN_DEBIAN_Development})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${ZEVRIN_DEBIAN_Runtime} (= ${version})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "utility library of a desktop server product (development files)
The headers of ZevrinUtils and of its trace service Fendrel, and what CMake's
find_package and pkg-config need to build a host program with them.")

# Debian's own account of its packages, beside the library's.
string(TIMESTAMP today "%a, %d %b %Y 00:00:00 +0000" UTC)
file(WRITE ${PROJECT_BINARY_DIR}/changelog.Debian
  "zevrinutils (${version}) unstable; urgency=medium\n\n  * New release: changelog.gz tells of it.\n\n"
  " -- ${CPACK_PACKAGE_CONTACT}  ${today}\n")

# The package that other packages find behind the libraries' names, and what makes the loader see them.
set(control ${PROJECT_BINARY_DIR}/debian)
file(WRITE ${control}/control   # for dpkg-shlibdeps
  "Source: zevrinutils\n\nPackage: ${ZEVRIN_DEBIAN_Runtime}\nArchitecture: any\n")
file(WRITE ${control}/triggers "activate-noawait ldconfig\n")
file(WRITE ${control}/shlibs "")
foreach(library ZevrinUtils Fendrel)
  file(APPEND ${control}/shlibs
    "lib${library} ${PROJECT_VERSION_MAJOR} ${ZEVRIN_DEBIAN_Runtime} (>= ${PROJECT_VERSION})\n")
endforeach()
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${control}/shlibs ${control}/triggers)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/DebianDepends.cmake)
set(CPACK_ZEVRIN_BINARY_DIR ${PROJECT_BINARY_DIR})
include(CPack)
