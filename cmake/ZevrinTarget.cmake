# What every target of the project shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# Where the exported headers lie: those of all targets, and the types of this one.
if(WIN32)
  set(ZEVRIN_PUBLIC_INCLUDE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/platform/windows/api/include)
else()
  set(ZEVRIN_PUBLIC_INCLUDE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/platform/linux/api/include)
endif()

# So many sources are compiled as one, where they are: in some targets always, in all where CMAKE_UNITY_BUILD is on, as
# it is in the presets whose programs are not worked on.
set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)

# A folder's sources go into a target as they come. Where sources are gathered, those of a folder become one.
macro(zevrin_sources target)
  file(GLOB sources CONFIGURE_DEPENDS *.cpp)
  target_sources(${target} PRIVATE ${sources})
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
  set_source_files_properties(${sources} TARGET_DIRECTORY ${target} PROPERTIES UNITY_GROUP ${CMAKE_CURRENT_SOURCE_DIR})
endmacro()

# Programs and DLLs side by side, so that Windows programs find theirs.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)

if(ZEVRIN_SANITIZER)
  add_compile_options(-fsanitize=${ZEVRIN_SANITIZER} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZEVRIN_SANITIZER})
  # With them GCC 12 finds values that are not set in its own std::regex.
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

if(ZEVRIN_COVERAGE)
  add_compile_options(--coverage -fprofile-abs-path -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

if(ZEVRIN_BUILD_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

add_library(zevrin_warnings INTERFACE)
target_compile_options(zevrin_warnings INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall;-Wextra;-Wpedantic;-Wshadow;-Wconversion>
  $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<BOOL:${ZEVRIN_WARNINGS_AS_ERRORS}>>:-Werror>
  # With -O3, GCC 12 takes the sum of a literal and a string for a copy onto itself.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>)

# Makes an installed Debian header-only library usable for all targets: only its own folder is linked
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

# What a Windows file tells of itself: its version and what it is. FILETYPE 1 is a program, 2 a DLL.
if(WIN32)
  enable_language(RC)
endif()
function(zevrin_version_resource target type description)
  if(WIN32)
    string(REPLACE "." "," number ${PROJECT_VERSION},0)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/Version.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  endif()
endfunction()

# What a library of ours needs as a module of its own: its name on each target, and nothing exported that
# the headers do not mark.
function(zevrin_module target description)
  if(WIN32)
    set_target_properties(${target} PROPERTIES PREFIX "")
    zevrin_version_resource(${target} 2 "${description}")
  else()
    set_target_properties(${target} PROPERTIES
      VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    zevrin_hide_templates(${target})
    target_link_options(${target} PRIVATE -Wl,--as-needed)
    if(NOT ZEVRIN_BUILD_FUZZ)   # Clang's sanitizers come with the program
      target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
  endif()
endfunction()

# The exported headers as a host sees them, in the source tree and installed.
function(zevrin_public_headers target)
  foreach(folder ${ZEVRIN_PUBLIC_INCLUDE})
    target_include_directories(${target} INTERFACE $<BUILD_INTERFACE:${folder}>)
  endforeach()
  target_include_directories(${target} INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_compile_features(${target} INTERFACE cxx_std_20)
endfunction()

# The compiler's run-time DLLs, which the Windows programs need beside them; without the symbols, nine tenths of them.
if(WIN32)
  set(ZEVRIN_RUNTIME_DLLS)
  set(unwinder libgcc_s_seh-1.dll)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(unwinder libgcc_s_dw2-1.dll)
  endif()
  foreach(dll libstdc++-6.dll ${unwinder} libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
      OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(own ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${dll})
    list(APPEND ZEVRIN_RUNTIME_DLLS ${own})
    if(NOT EXISTS ${own} OR ${path} IS_NEWER_THAN ${own})
      file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
      execute_process(COMMAND ${CMAKE_STRIP} -o ${own} ${path} COMMAND_ERROR_IS_FATAL ANY)
    endif()
  endforeach()
endif()
