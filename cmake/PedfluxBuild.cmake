# What every target of the project shares: the language, the warnings, the sanitizers and the compiler cache.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
# Components whose compiler options differ from those of the precompiled header, and the bridge.
set(PEDFLUX_NOT_PRECOMPILED engine_crowd pedflux_runtime)
# What is linked with a library need not be linked again when only its inside changes.
set(CMAKE_LINK_DEPENDS_NO_SHARED ON)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

# The gain of -O3 lies within the noise of the benchmarks, its time of compilation does not.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

find_program(PEDFLUX_CCACHE ccache)
if(PEDFLUX_CCACHE)
    # With precompiled headers the cache asks for more trust: in times of day and in what a header defines.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${PEDFLUX_CCACHE})
endif()

add_library(pedflux_build INTERFACE)
target_compile_options(pedflux_build INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wunused
    -Wdouble-promotion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # g++ 12 sees an overlap in `"text" + std::string` that is not there.
    target_compile_options(pedflux_build INTERFACE -Wno-restrict)
endif()
if(PEDFLUX_SANITIZE)
    # Enough for readable traces; more would double the time of compilation.
    set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1 -DNDEBUG")
    target_compile_options(pedflux_build INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
    target_link_options(pedflux_build INTERFACE -fsanitize=address,undefined)
endif()

# pedflux_component(NAME <dependencies>...): the library of every .cpp file in the current folder and the folders in it. Which
# folder may include which is written in engine/rooms.txt and checked by the lint.
function(pedflux_component name)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp)
    if(NOT sources)
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE pedflux_build ${ARGN})
        return()
    endif()
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC pedflux_build ${ARGN})
    if(TARGET engine_base AND NOT name STREQUAL engine_base AND NOT name IN_LIST PEDFLUX_NOT_PRECOMPILED)
        target_precompile_headers(${name} REUSE_FROM engine_base)
    endif()
endfunction()

# pedflux_gtest(NAME <libraries>...): a GoogleTest program of every .cpp file in the current folder, one CTest test per case.
function(pedflux_gtest name)
    file(GLOB sources CONFIGURE_DEPENDS *.cpp)
    if(NOT sources)
        return()
    endif()
    add_executable(${name} ${sources})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE pedflux_build ${ARGN} GTest::gtest_main GTest::gmock)
    # What takes long in a test is the engine; the test itself takes longer to compile than to run.
    target_compile_options(${name} PRIVATE -O0)
    target_precompile_headers(${name} REUSE_FROM pedflux_test_precompiled)
    add_test(NAME ${name} COMMAND ${name})
endfunction()
