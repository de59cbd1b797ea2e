# How every room of the house is compiled, and what one room may link.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# A rebuild in another folder finds what an earlier one has compiled.
find_program(ZEPHRIN_CCACHE ccache)
if(ZEPHRIN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${ZEPHRIN_CCACHE})
    set(CMAKE_C_COMPILER_LAUNCHER ${ZEPHRIN_CCACHE})
endif()

add_library(zephrin_options INTERFACE)
target_compile_options(zephrin_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wconversion
    -Wno-sign-conversion $<$<BOOL:${ZEPHRIN_WERROR}>:-Werror>
    $<$<CONFIG:Debug>:-g1>
    # g++ 12 sees uninitialised values in every std::optional that its optimiser has taken apart, and overlaps in
    # every std::string that it has put together.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<NOT:$<CONFIG:Debug>>>:-Wno-maybe-uninitialized -Wno-restrict>)
target_compile_definitions(zephrin_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(ZEPHRIN_SANITIZE)
    target_compile_options(zephrin_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1)
    target_link_options(zephrin_options INTERFACE -fsanitize=address,undefined)
endif()

# zephrin_part(NAME OPTION "what it is" PACKAGE VERSION)
#
# A part that is built where the package that it needs is there. The option is ON, OFF, or AUTO, which looks at every configure
# step, so that installing what was missing is enough; ON fails where it is missing. ZEPHRIN_PARTS gets the name of a part
# to build.
function(zephrin_part name option what package version)
    set(unasked OFF)
    if(PROJECT_IS_TOP_LEVEL)
        set(unasked AUTO)
    endif()
    set(${option} ${unasked} CACHE STRING "Build ${what}: ON, OFF, or AUTO, where ${package} is there")
    if(${option} STREQUAL "AUTO")
        find_package(${package} ${version} QUIET)
        if(NOT ${package}_FOUND)
            message(STATUS "Without ${what}: ${package} is not there")
            return()
        endif()
    elseif(${option})
        find_package(${package} ${version} REQUIRED)
    else()
        return()
    endif()
    set(ZEPHRIN_PARTS ${ZEPHRIN_PARTS} ${name} PARENT_SCOPE)
endfunction()

if(ZEPHRIN_FUZZ)
    target_compile_options(zephrin_options INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(zephrin_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# zephrin_room(NAME DEPENDS room... LIBRARIES lib...)
#
# A room is the static library of its folder. It sees the public headers, its own folder's tree by paths from src/,
# and what the rooms below it link; a widget in a room that links no QtWidgets is therefore a compile error.
function(zephrin_room name)
    cmake_parse_arguments(ARG "" "" "DEPENDS;LIBRARIES;SOURCES" ${ARGN})
    set(sources ${ARG_SOURCES})
    if(NOT sources)
        file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h *.ui *.qrc)
    endif()
    if(NOT sources)
        set(sources ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp)
        file(WRITE ${sources} "")
    endif()
    add_library(${name} STATIC ${sources})
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC zephrin_options ${ARG_DEPENDS} ${ARG_LIBRARIES})
    target_compile_definitions(${name} PRIVATE ZEPHRIN_BUILDING_LIBRARY)
    set_property(GLOBAL APPEND PROPERTY ZEPHRIN_ROOMS ${name})
    set_property(GLOBAL APPEND PROPERTY ZEPHRIN_LIBRARIES ${ARG_LIBRARIES})
endfunction()

# zephrin_test(NAME LINKS room... [AT_ONCE])
#
# One test program of the folder's files; every test case in it is a test of its own for ctest, or with AT_ONCE all of them
# together, where they share what takes long to make.
function(zephrin_test name)
    cmake_parse_arguments(ARG "AT_ONCE" "" "LINKS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
    add_executable(${name} ${sources})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(${name} PRIVATE zephrin_test_support ${ARG_LINKS})
    set(environment QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8)
    if(ZEPHRIN_SANITIZE)
        list(APPEND environment
            ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1
            UBSAN_OPTIONS=print_stacktrace=1
            LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0)
    endif()
    if(ARG_AT_ONCE)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT "${environment}")
        return()
    endif()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 DISCOVERY_MODE PRE_TEST
        PROPERTIES TIMEOUT 120)
    # Not among the properties above: of a list in there only the first item arrives.
    set(set_environment ${CMAKE_CURRENT_BINARY_DIR}/${name}_environment.cmake)
    file(WRITE ${set_environment} "set_tests_properties(\${${name}_TESTS} PROPERTIES ENVIRONMENT \"${environment}\")\n")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${set_environment})
    # For a folder that runs its program in further ways.
    set(zephrin_test_environment "${environment}" PARENT_SCOPE)
endfunction()
