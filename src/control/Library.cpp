// The shared library is made of the rooms' archives; this file is what CMake needs to see of it.
