# Debian's libpolyclipping-dev comes without a CMake package. Defines the target Polyclipping::Polyclipping.
find_path(Polyclipping_INCLUDE_DIR polyclipping/clipper.hpp)
find_library(Polyclipping_LIBRARY polyclipping)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Polyclipping REQUIRED_VARS Polyclipping_LIBRARY Polyclipping_INCLUDE_DIR)
mark_as_advanced(Polyclipping_INCLUDE_DIR Polyclipping_LIBRARY)
if(Polyclipping_FOUND AND NOT TARGET Polyclipping::Polyclipping)
    add_library(Polyclipping::Polyclipping UNKNOWN IMPORTED GLOBAL)
    set_target_properties(Polyclipping::Polyclipping PROPERTIES
        IMPORTED_LOCATION "${Polyclipping_LIBRARY}" INTERFACE_INCLUDE_DIRECTORIES "${Polyclipping_INCLUDE_DIR}")
endif()
