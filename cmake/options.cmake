option(VELDRAN_WITH_EMBEDDED "Build the embedded database (needs SQLite 3)" ON)
# Found or not found: whoever has no driver manager builds without, and is told so.
find_package(ODBC QUIET)
option(VELDRAN_WITH_ODBC "Build the connection to SQL Server (needs a driver manager: unixODBC or that of Windows)"
       ${ODBC_FOUND})
option(VELDRAN_WITH_QT "Build the Qt views and the reference shell (needs Qt 6)" ON)
option(VELDRAN_BUILD_TESTS "Build the tests (needs GoogleTest)" ON)
option(VELDRAN_BENCH "Build the benchmarks (needs Google Benchmark, and Qt for those of the views)" OFF)
option(VELDRAN_SANITIZE "Instrument everything with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

# A second build of the same sources costs seconds where ccache is present; nothing depends on it.
find_program(VELDRAN_CCACHE ccache)
if(VELDRAN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${VELDRAN_CCACHE})
endif()

if(NOT MSVC)
    # Nobody puts functions of his own in the place of a library's: they are called directly, and inlined.
    add_compile_options($<$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU>>:-fno-semantic-interposition>)
    add_link_options($<$<AND:$<CONFIG:Release>,$<PLATFORM_ID:Linux>>:LINKER:-Bsymbolic-functions>)
endif()

if(VELDRAN_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
