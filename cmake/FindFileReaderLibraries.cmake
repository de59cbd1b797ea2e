# What zephrin-file-reader is linked with beside what the library has: libmdb for databases, with the GLib of its header, and
# freexl for old workbooks.
include(FindPackageHandleStandardArgs)
find_package(PkgConfig QUIET)
pkg_check_modules(libmdb QUIET IMPORTED_TARGET libmdb glib-2.0)
pkg_check_modules(freexl QUIET IMPORTED_TARGET freexl)
find_package_handle_standard_args(FileReaderLibraries
    REQUIRED_VARS libmdb_FOUND freexl_FOUND VERSION_VAR libmdb_libmdb_VERSION)
