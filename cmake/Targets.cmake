# One library a folder of src/, one test program a folder of tests/: all with the same flags.

add_library(corvane_flags INTERFACE)
target_include_directories(corvane_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(corvane_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
  -Woverloaded-virtual -Werror)
if(CMAKE_UNITY_BUILD)
  # A joined source includes the others, so a type of one of them seems to come from a header, and a name of another is
  # shadowed.
  target_compile_options(corvane_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>
    $<$<CXX_COMPILER_ID:Clang>:-Wno-shadow>)
endif()
# So that a fault of memory ends the program before it becomes somebody's way in. Control-flow
# protection is for the processors that have it.
include(CheckCXXCompilerFlag)
target_link_options(corvane_flags INTERFACE $<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)
foreach(flag -fstack-clash-protection -fcf-protection)
  string(MAKE_C_IDENTIFIER "has${flag}" has)
  check_cxx_compiler_flag(${flag} ${has})
  if(${has})
    target_compile_options(corvane_flags INTERFACE $<$<CONFIG:Release>:${flag}>)
  endif()
endforeach()
target_compile_definitions(corvane_flags INTERFACE _GLIBCXX_ASSERTIONS)
# Test code runs once and is most of what is compiled: in it, and in what headers give it inline, only faults of memory are
# looked for, by calls, which the compiler is through with in two thirds of the time.
define_property(TARGET PROPERTY CORVANE_IS_TEST INITIALIZE_FROM_VARIABLE CORVANE_IS_TEST)
if(CORVANE_SANITIZE)
  set(is_test $<BOOL:$<TARGET_PROPERTY:CORVANE_IS_TEST>>)
  target_compile_options(corvane_flags INTERFACE -fsanitize=address $<$<NOT:${is_test}>:-fsanitize=undefined>
    $<$<AND:${is_test},$<CXX_COMPILER_ID:GNU>>:--param=asan-instrumentation-with-call-threshold=0>
    -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(corvane_flags INTERFACE -fsanitize=address,undefined)
endif()
if(CORVANE_FUZZ)
  # So that the fuzzer sees which way its input goes through the libraries too.
  target_compile_options(corvane_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# corvane_library(NAME [dependencies...]): every source of the current folder and of its subfolders.
function(corvane_library NAME)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_library(corvane_${NAME} STATIC ${sources})
  target_link_libraries(corvane_${NAME} PUBLIC corvane_flags ${ARGN})
endfunction()

# corvane_test(LABEL [dependencies...]): one GoogleTest program from the current folder.
function(corvane_test LABEL)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_executable(${LABEL}_tests ${sources})
  target_link_libraries(${LABEL}_tests PRIVATE corvane_flags ${ARGN} GTest::gtest GTest::gtest_main)
  target_include_directories(${LABEL}_tests PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  # Long tables of cases take the optimizer minutes.
  target_compile_options(${LABEL}_tests PRIVATE -O0)
  gtest_discover_tests(${LABEL}_tests DISCOVERY_MODE PRE_TEST TEST_PREFIX "${LABEL}."
    PROPERTIES LABELS ${LABEL} TIMEOUT 120)
endfunction()

# A library of the calls that a protocol of Wayland describes, which are declared in HEADER.h.
function(corvane_wayland_protocol name protocol header)
  set(protocol ${CMAKE_CURRENT_SOURCE_DIR}/${protocol})
  set(calls ${CMAKE_CURRENT_BINARY_DIR}/${header})
  get_filename_component(folder ${calls} DIRECTORY)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${calls}.h ${calls}.c DEPENDS ${protocol}
    COMMAND ${WAYLAND_SCANNER} client-header ${protocol} ${calls}.h
    COMMAND ${WAYLAND_SCANNER} private-code ${protocol} ${calls}.c)
  add_library(${name} STATIC ${calls}.c ${calls}.h)
  target_link_libraries(${name} PUBLIC PkgConfig::WAYLAND)
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_BINARY_DIR})
endfunction()
