# Language level, warnings, sanitizers and the compiler cache, for every target of the project.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

set(QUORVIN_SANITIZE "" CACHE STRING "Sanitizers for -fsanitize=, comma separated")

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                    -Werror)
if(QUORVIN_SANITIZE)
    add_compile_options(-fsanitize=${QUORVIN_SANITIZE} -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${QUORVIN_SANITIZE})
endif()

# String literals that users see are QStringLiteral or pass through tr-free UTF-8 constructors;
# implicit conversions from const char* hide encoding mistakes.
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS
                        QT_NO_CAST_FROM_BYTEARRAY)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()
