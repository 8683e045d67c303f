# Flags that every target of this project shares, scoped to the targets.

find_program(QUILLBOOK_CCACHE ccache)
if(QUILLBOOK_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${QUILLBOOK_CCACHE})
endif()

add_library(quillbook_flags INTERFACE)
target_compile_features(quillbook_flags INTERFACE cxx_std_20)
target_compile_options(quillbook_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow=compatible-local -Wnon-virtual-dtor)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # g++ 12 warns of overlapping copies inside its own std::string wherever a literal is put before a text.
  target_compile_options(quillbook_flags INTERFACE -Wno-restrict)
endif()
if(QUILLBOOK_WERROR)
  target_compile_options(quillbook_flags INTERFACE -Werror)
endif()
if(QUILLBOOK_SANITIZE)
  target_compile_options(quillbook_flags INTERFACE -fsanitize=${QUILLBOOK_SANITIZE} -fno-sanitize-recover=all
                                                   -fno-omit-frame-pointer)
  target_link_options(quillbook_flags INTERFACE -fsanitize=${QUILLBOOK_SANITIZE})
endif()
if(QUILLBOOK_FUZZ)
  # Counts in every file what is reached: without it libFuzzer is blind.
  target_compile_options(quillbook_flags INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(quillbook_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL Clang AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 16)
  target_include_directories(quillbook_flags BEFORE INTERFACE ${PROJECT_SOURCE_DIR}/tools/clang14)
  target_compile_options(quillbook_flags INTERFACE -Wno-unknown-warning-option)
endif()

# quillbook_library(NAME <sources...>): a static library that may also go into a shared one.
function(quillbook_library name)
  add_library(${name} STATIC ${ARGN})
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_EXTENSIONS OFF)
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                                            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
                             PRIVATE ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:quillbook_flags>)
  set_property(GLOBAL APPEND PROPERTY QUILLBOOK_LIBRARIES ${name})
endfunction()
