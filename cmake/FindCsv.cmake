# Debian's libcsv-dev comes without a CMake package. Defines the target Csv::Csv.
find_path(Csv_INCLUDE_DIR csv.h)
find_library(Csv_LIBRARY csv)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Csv REQUIRED_VARS Csv_LIBRARY Csv_INCLUDE_DIR)
mark_as_advanced(Csv_INCLUDE_DIR Csv_LIBRARY)
if(Csv_FOUND AND NOT TARGET Csv::Csv)
    add_library(Csv::Csv UNKNOWN IMPORTED GLOBAL)
    set_target_properties(Csv::Csv PROPERTIES
        IMPORTED_LOCATION "${Csv_LIBRARY}" INTERFACE_INCLUDE_DIRECTORIES "${Csv_INCLUDE_DIR}")
endif()
