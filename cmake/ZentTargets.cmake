# How this project's targets are made, so that warnings, floating point rules and sanitizers are
# the same everywhere.

# Results must be the same bits on every machine: no contraction, never fast-math.
add_library(zent_options INTERFACE)
target_compile_options(zent_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Werror -ffp-contract=off)
if(ZENT_SANITIZE)
  target_compile_options(zent_options INTERFACE
    -fsanitize=${ZENT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zent_options INTERFACE -fsanitize=${ZENT_SANITIZE})
endif()

# zent_library(NAME SOURCES a.cpp ... DEPENDS lower ...): one folder of the module or the host.
# DEPENDS names the lower folders that it may include from.
function(zent_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  if(ARG_SOURCES)
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} PRIVATE zent_options)
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE ${ARG_DEPENDS})
  endif()
endfunction()
