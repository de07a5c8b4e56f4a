# What every target of the project shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

if(WIN32)
  set(ZEVRIN_PLATFORM_DIR ${PROJECT_SOURCE_DIR}/platform/windows)
else()
  set(ZEVRIN_PLATFORM_DIR ${PROJECT_SOURCE_DIR}/platform/linux)
endif()

# Programs and DLLs side by side, so that Windows programs find theirs.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)

if(ZEVRIN_SANITIZER)
  add_compile_options(-fsanitize=${ZEVRIN_SANITIZER} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZEVRIN_SANITIZER})
endif()

add_library(zevrin_warnings INTERFACE)
target_compile_options(zevrin_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)

# Makes an installed Debian header-only library usable for both targets: only its own folder is linked
# into the build tree, never the system's include folder, which a cross compiler must not see.
function(zevrin_header_library name folder)
  if(NOT EXISTS /usr/include/${folder})
    message(FATAL_ERROR "/usr/include/${folder} is missing: install the package that brings it (./test and ./run do)")
  endif()
  set(root ${PROJECT_BINARY_DIR}/header-libraries/${folder})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK /usr/include/${folder} ${root}/${folder} SYMBOLIC)
  add_library(${name} INTERFACE)
  target_include_directories(${name} SYSTEM INTERFACE ${root})
endfunction()

# The templates of the standard library mark themselves as visible, on Linux. Visible ones would be shared
# with the host's, and some of them (unique symbols) keep a module from ever being unloaded.
function(zevrin_hide_templates target)
  if(NOT WIN32)
    target_link_options(${target} PRIVATE -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  endif()
endfunction()

# What a library of ours needs as a module of its own: its name on each target, and nothing exported that
# the headers do not mark.
function(zevrin_module target)
  if(WIN32)
    set_target_properties(${target} PROPERTIES PREFIX "")
  else()
    set_target_properties(${target} PROPERTIES
      VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    zevrin_hide_templates(${target})
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()

# The headers as a host sees them.
function(zevrin_public_headers target)
  target_include_directories(${target} INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<BUILD_INTERFACE:${ZEVRIN_PLATFORM_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endfunction()

# The compiler's run-time DLLs stand beside the Windows programs.
if(WIN32)
  foreach(dll libstdc++-6.dll libgcc_s_dw2-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
      OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    file(COPY ${path} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  endforeach()
endif()
