# Compiler launcher, warnings and sanitizer flags shared by every target.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_C_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

# The day-number arithmetic is defined by exact double-precision formulas;
# value-changing floating-point optimisations would change its answers.
add_compile_options(-fno-fast-math -ffp-contract=off)

set(VCD_WARNING_FLAGS -Wall -Wextra -Wpedantic -Wno-unused-parameter)

set(VCD_SANITIZER_FLAGS "")
if(VCD_SANITIZE)
  list(JOIN VCD_SANITIZE "," _vcd_san)
  set(VCD_SANITIZER_FLAGS -fsanitize=${_vcd_san} -fno-omit-frame-pointer)
  if("undefined" IN_LIST VCD_SANITIZE)
    list(APPEND VCD_SANITIZER_FLAGS -fno-sanitize-recover=all)
  endif()
  add_compile_options(${VCD_SANITIZER_FLAGS})
  add_link_options(${VCD_SANITIZER_FLAGS})
endif()

function(vcd_set_warnings target)
  target_compile_options(${target} PRIVATE ${VCD_WARNING_FLAGS})
endfunction()
