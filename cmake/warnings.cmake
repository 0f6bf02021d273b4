# Every warning the house asks for, with its reason. All are errors: a warning that may stay is a warning nobody reads.
set(VELDRAN_WARNINGS
    -Wall -Wextra -Wpedantic
    -Wconversion              # percentages, codes and levels are narrow numbers: each narrowing is written out
    -Wsign-conversion         # record positions are signed, container sizes are not
    -Wshadow                  # a routine's local never hides a form field
    -Wnon-virtual-dtor        # contracts are deleted through their interface
    -Woverloaded-virtual      # a host that overrides half an overload set is told so
    -Wold-style-cast          # a cast that can be searched for can be reviewed
    -Wcast-qual
    -Wformat=2
    -Wimplicit-fallthrough
    -Wnull-dereference
    -Wextra-semi
)
set(VELDRAN_WARNINGS_AS_ERRORS ON CACHE BOOL "Treat the warnings above as errors")

function(veldran_warnings target)
    target_compile_options(${target} PRIVATE ${VELDRAN_WARNINGS})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND (VELDRAN_SANITIZE OR NOT CMAKE_BUILD_TYPE STREQUAL "Debug"))
        # GCC 12 reports library internals it has inlined; its findings there are false, ours are seen in Debug.
        target_compile_options(${target} PRIVATE -Wno-null-dereference -Wno-maybe-uninitialized -Wno-restrict)
    endif()
    if(VELDRAN_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
