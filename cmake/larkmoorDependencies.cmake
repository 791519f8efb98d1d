# The libraries that a program with Larkmoor in it is linked with, found alike by the build and, once
# installed, by find_package(larkmoor). LMDB and libcrypt bring no CMake package of their own.

include(CMakeFindDependencyMacro)
find_dependency(Threads)

foreach(library IN ITEMS lmdb crypt)
  if(NOT TARGET larkmoor::${library})
    find_library(LARKMOOR_${library}_LIBRARY ${library})
    mark_as_advanced(LARKMOOR_${library}_LIBRARY)
    if(NOT LARKMOOR_${library}_LIBRARY)
      message(FATAL_ERROR
        "Larkmoor needs the library ${library}: on Debian, apt-get install lib${library}-dev")
    endif()
    add_library(larkmoor::${library} UNKNOWN IMPORTED)
    set_target_properties(larkmoor::${library} PROPERTIES
      IMPORTED_LOCATION "${LARKMOOR_${library}_LIBRARY}")
  endif()
endforeach()
