# What makes a fault that is still there harder to misuse: addresses nobody can guess, tables that cannot be
# written, guards on the stack. tests/cli/hardening_test.py reads the finished programs.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(MSVC)
  target_compile_options(lorivan_flags INTERFACE /guard:cf)
  target_link_options(lorivan_flags INTERFACE /guard:cf /DYNAMICBASE /HIGHENTROPYVA /NXCOMPAT)
elseif(WIN32)
  target_compile_options(lorivan_flags INTERFACE -fstack-protector-strong)
  target_link_options(lorivan_flags INTERFACE -fstack-protector-strong
    -Wl,--dynamicbase,--high-entropy-va,--nxcompat)
elseif(NOT APPLE)
  include(CheckCXXCompilerFlag)
  check_cxx_compiler_flag(-fcf-protection LORIVAN_HAS_CF_PROTECTION)  # not for every processor
  target_compile_options(lorivan_flags INTERFACE -fstack-protector-strong
    $<$<BOOL:${LORIVAN_HAS_CF_PROTECTION}>:-fcf-protection>)
  target_link_options(lorivan_flags INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
  if(NOT (LORIVAN_SANITIZE OR LORIVAN_FUZZ))  # which do the same, and more
    target_compile_options(lorivan_flags INTERFACE
      $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>)
  endif()
endif()
