# The libraries that a host links. The shared and the static one are made of the same objects, those of all rooms, so that
# nothing of a public class is ever missing in one of them.

get_property(zephrin_rooms GLOBAL PROPERTY ZEPHRIN_ROOMS)
list(TRANSFORM zephrin_rooms REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>" OUTPUT_VARIABLE zephrin_objects)

# What a host never sees of them: it is linked and not compiled against.
get_property(zephrin_hidden_libraries GLOBAL PROPERTY ZEPHRIN_LIBRARIES)
list(REMOVE_DUPLICATES zephrin_hidden_libraries)
list(REMOVE_ITEM zephrin_hidden_libraries Qt6::Core Qt6::Gui Qt6::Widgets)

# zephrin_library(TARGET SHARED|STATIC NAME)
#
# NAME is what a host links: Zephrin::NAME, in this build as well as installed.
function(zephrin_library target type name)
    add_library(${target} ${type} ${zephrin_objects})
    add_library(Zephrin::${name} ALIAS ${target})
    set_target_properties(${target} PROPERTIES
        LINKER_LANGUAGE CXX OUTPUT_NAME Zephrin EXPORT_NAME ${name}
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} INSTALL_RPATH "")
    target_compile_features(${target} INTERFACE cxx_std_20)
    target_include_directories(${target} INTERFACE
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_link_libraries(${target} PUBLIC Qt6::Core Qt6::Gui Qt6::Widgets PRIVATE ${zephrin_hidden_libraries})
    if(ZEPHRIN_SANITIZE)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
endfunction()

if(BUILD_SHARED_LIBS OR ZEPHRIN_BUILD_BOTH)
    zephrin_library(ZephrinShared SHARED Shared)
    target_compile_definitions(ZephrinShared INTERFACE ZEPHRIN_SHARED)
    set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    target_link_options(ZephrinShared PRIVATE LINKER:--version-script=${exports})
    set_target_properties(ZephrinShared PROPERTIES LINK_DEPENDS ${exports})
endif()
if(NOT BUILD_SHARED_LIBS OR ZEPHRIN_BUILD_BOTH)
    zephrin_library(ZephrinStatic STATIC Static)
endif()

if(BUILD_SHARED_LIBS)
    add_library(Zephrin::Zephrin ALIAS ZephrinShared)
else()
    add_library(Zephrin::Zephrin ALIAS ZephrinStatic)
endif()

# A host that has this source tree in its own, or fetches it, may ask by find_package all the same, as the examples do.
file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/zephrin-config.cmake "set(Zephrin_FOUND TRUE)\n")
include(CMakePackageConfigHelpers)
write_basic_package_version_file(${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/zephrin-config-version.cmake
    COMPATIBILITY SameMinorVersion)
