# Language level, warnings, sanitizers and the compiler cache, for every target of the project.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# Clang had coroutines behind an option up to version 15, also in C++20.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 16)
    add_compile_options(-fcoroutines-ts)
endif()

set(QUORVIN_SANITIZE "" CACHE STRING "Sanitizers for -fsanitize=, comma separated")

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                    -Werror)
if(QUORVIN_SANITIZE)
    # Between the checks GCC loses sight of what is initialized, and warns of it; and its thread
    # sanitizer warns of Qt's fences, which it doesn't see.
    add_compile_options(-fsanitize=${QUORVIN_SANITIZE} -fno-omit-frame-pointer
                        -fno-sanitize-recover=all
                        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
                        $<$<CXX_COMPILER_ID:GNU>:-Wno-tsan>)
    add_link_options(-fsanitize=${QUORVIN_SANITIZE})
endif()

# Implicit conversions between text and bytes hide mistakes of encoding.
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS
                        QT_NO_CAST_FROM_BYTEARRAY)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    # Without this sloppiness it leaves out whatever uses precompiled headers.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${CCACHE_PROGRAM}")
endif()
