# Debian packages, one for each component that is built; scripts/package makes them.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zephrin)
set(CPACK_PACKAGE_VENDOR "The Zephrin authors")
set(CPACK_PACKAGE_CONTACT "The Zephrin authors <zephrin@localhost>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
# CPack puts any other text than this one before the summary of each package.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_NAME} built using CMake")
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(library_package libzephrin${PROJECT_VERSION_MAJOR})
set(same_library "${library_package} (= ${PROJECT_VERSION})")

# zephrin_package(COMPONENT NAME SECTION SUMMARY DESCRIPTION [DEPENDS])
function(zephrin_package component name section summary description)
    string(TOUPPER ${component} key)
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_COMPONENT_${key}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${ARGN}" PARENT_SCOPE)
    set(documents ${CMAKE_INSTALL_DATADIR}/doc/${name})
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright ${PROJECT_SOURCE_DIR}/NOTICE
        DESTINATION ${documents} COMPONENT ${component})
endfunction()

zephrin_package(runtime ${library_package} libs "embeddable visual SQL query builder"
"Zephrin is a control for Qt programs. Its wizard lets users who know no SQL
pick tables and fields, limit, sort and group them, and run the statement.
.
This package holds the shared library.")
zephrin_package(devel libzephrin-dev libdevel "embeddable visual SQL query builder (development files)"
"Headers, the static library, and what CMake and pkg-config need to find
Zephrin."
    "${same_library}, qt6-base-dev, qt6-svg-dev, libsqlite3-dev, unixodbc-dev, libicu-dev, libzip-dev")
if(TARGET zephrin-demo)
    zephrin_package(demo zephrin-demo database "demo host of a visual SQL query builder"
"A program that holds one Zephrin control, with a sample database to build
queries on." "${same_library}")
endif()
if(TARGET zephrin-file-reader)
    zephrin_package(reader zephrin-file-reader database "reader of Access and Excel files for Zephrin"
"With this program Zephrin opens Access databases and Excel workbooks. It reads
them in a process of its own, with limits, so that no file can harm a host.")
endif()
if(TARGET ZephrinDesigner)
    zephrin_package(designer zephrin-designer devel "Qt Designer plugin of a visual SQL query builder"
"Puts the Zephrin control into Qt Designer, with its properties and its
connection page." "${same_library}, designer-qt6")
endif()
include(CPack)
