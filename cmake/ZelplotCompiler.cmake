# What every target of the project is compiled with.

# A launcher is the choice of whoever configures, and of nobody else's project.
if(PROJECT_IS_TOP_LEVEL AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(ZELPLOT_CCACHE ccache)
    if(ZELPLOT_CCACHE)
        set(CMAKE_CXX_COMPILER_LAUNCHER "${ZELPLOT_CCACHE}")
    endif()
endif()

# One place for the warnings, so that library, tests, examples and benchmarks keep the same level.
add_library(zelplot_warnings INTERFACE)
target_compile_options(zelplot_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    $<$<BOOL:${ZELPLOT_WARNINGS_AS_ERRORS}>:-Werror>)
