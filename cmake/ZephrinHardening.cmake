# What turns a fault of memory into an end of the program instead of somebody else's program: for whatever is built here in a
# release, not for a project that has this one inside its own.

option(ZEPHRIN_HARDEN "Build with the compiler's and the linker's protections" ${PROJECT_IS_TOP_LEVEL})
if(NOT ZEPHRIN_HARDEN OR ZEPHRIN_SANITIZE)
    return()
endif()

include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)
include(CheckPIESupported)
check_pie_supported()

foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection=full)
    string(MAKE_C_IDENTIFIER "zephrin_takes${flag}" taken)
    check_cxx_compiler_flag(${flag} ${taken})
    if(${taken})
        add_compile_options($<$<NOT:$<CONFIG:Debug>>:${flag}>)
    endif()
endforeach()
# Taken back first, where a distribution has set it lower.
add_compile_options("$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>")
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    add_link_options(LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
    # The start-up code of the C library says nothing of itself, which the linker would take for a no of the whole.
    if(zephrin_takes_fcf_protection_full)
        foreach(mark ibt shstk)
            check_linker_flag(CXX LINKER:-z,${mark} zephrin_marks_${mark})
            if(zephrin_marks_${mark})
                add_link_options($<$<NOT:$<CONFIG:Debug>>:LINKER:-z,${mark}>)
            endif()
        endforeach()
    endif()
endif()
