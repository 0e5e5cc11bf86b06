# How every part of the program is compiled, and the shape of a folder.

add_library(merivane_flags INTERFACE)
target_compile_options(merivane_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wcast-qual -Wnon-virtual-dtor -Woverloaded-virtual -Wvla -Werror
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overflow>
  $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds>)  # all three cry wolf over std::string in GCC 12
target_include_directories(merivane_flags INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(merivane_flags INTERFACE MERIVANE_VERSION="${PROJECT_VERSION}")
if(MERIVANE_SANITIZE)
  target_compile_options(merivane_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)  # cries wolf over instrumented std::regex
  target_link_options(merivane_flags INTERFACE -fsanitize=address,undefined)
endif()
if(MERIVANE_PORTABLE)
  target_compile_definitions(merivane_flags INTERFACE MERIVANE_PORTABLE)
endif()
if(MERIVANE_FUZZ)
  target_compile_options(merivane_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(WIN32)
  target_compile_definitions(merivane_flags INTERFACE
    UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601 _WIN32_IE=0x0600)
  target_link_options(merivane_flags INTERFACE -static -Wl,--nxcompat -Wl,--dynamicbase
    -Wl,--no-insert-timestamp  # the same sources make the same bytes
    # Windows 7 and later: what it calls is there, and it shows and behaves as one of its own.
    -Wl,--major-os-version=6,--minor-os-version=1,--major-subsystem-version=6,--minor-subsystem-version=1)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    # The compiler's own floor is older than any machine that runs the program.
    target_compile_options(merivane_flags INTERFACE -msse2 -mfpmath=sse -mstackrealign)
    target_link_options(merivane_flags INTERFACE -Wl,--large-address-aware)
  else()
    target_link_options(merivane_flags INTERFACE -Wl,--high-entropy-va)
  endif()
endif()

# The standard headers are read once instead of once a file: that is most of a build. The fuzz preset
# does without, so that a header that a file forgets to include is still found.
option(MERIVANE_PRECOMPILE "Precompile the standard library's headers" ON)
set(standard_headers <algorithm> <array> <atomic> <cstddef> <cstdint> <cstdlib> <cstring> <functional>
  <memory> <new> <optional> <span> <string> <string_view> <utility> <vector>)
if(MERIVANE_PRECOMPILE)
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/precompiled.cpp CONTENT "")
  add_library(merivane_precompiled STATIC ${PROJECT_BINARY_DIR}/precompiled.cpp)
  target_link_libraries(merivane_precompiled PRIVATE merivane_flags)
  target_precompile_headers(merivane_precompiled PRIVATE ${standard_headers})
endif()

# merivane_library(NAME DEPENDENCY...): the library of the folder this stands in. Files directly in the
# folder, and in its subfolder search/, are portable; posix/ or win/ hold the platform's side of the same library.
function(merivane_library name)
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h search/*.cpp search/*.h)
  if(WIN32)
    file(GLOB platform CONFIGURE_DEPENDS win/*.cpp win/*.h)
  else()
    file(GLOB platform CONFIGURE_DEPENDS posix/*.cpp posix/*.h)
  endif()
  add_library(merivane_${name} STATIC ${sources} ${platform})
  target_link_libraries(merivane_${name} PUBLIC merivane_flags)
  if(MERIVANE_PRECOMPILE)
    target_precompile_headers(merivane_${name} REUSE_FROM merivane_precompiled)
  endif()
  foreach(dependency ${ARGN})
    target_link_libraries(merivane_${name} PUBLIC merivane_${dependency})
  endforeach()
endfunction()
