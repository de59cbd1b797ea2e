# Configures the project beside this file in one build folder, before and after what it needs is installed.
file(REMOVE_RECURSE ${WORK})
set(installed ${WORK}/installed/lib/cmake/Widgetry)

# expect(WHAT status text arguments...): a configure step that succeeds (0) or fails (1), and what its output holds.
function(expect what status text)
    execute_process(
        COMMAND ${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${WORK}/build -DCMAKE_PREFIX_PATH=${WORK}/installed
                -DZEPHRIN_BUILD_RULES=${RULES} ${ARGN}
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result STREQUAL status OR NOT output MATCHES "${text}")
        message(SEND_ERROR "${what}: ${result}\n${output}")
    endif()
endfunction()

expect("nobody asks for it, and it can't be built" 0 "Without the workshop.*parts: \\.")
expect("it was asked for, and can't be built" 1 "Widgetry" -DBUILD_WORKSHOP=ON)
expect("nobody asks for it any more" 0 "parts: \\." -DBUILD_WORKSHOP=AUTO)
file(WRITE ${installed}/WidgetryConfig.cmake "")
file(WRITE ${installed}/WidgetryConfigVersion.cmake "set(PACKAGE_VERSION 2.1)\nset(PACKAGE_VERSION_COMPATIBLE TRUE)\n")
expect("what was missing was installed" 0 "parts: workshop\\.")
expect("nobody wants it" 0 "parts: \\." -DBUILD_WORKSHOP=OFF)
