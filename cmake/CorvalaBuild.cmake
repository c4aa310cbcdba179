# Compiler settings shared by every target of the project.

find_program(CORVALA_CCACHE ccache)
if(CORVALA_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CORVALA_CCACHE})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast
                    -Woverloaded-virtual)
# In a batch every source but the first is an included file, for which GCC
# takes a test fixture in an anonymous namespace for one in a header.
add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
# Tables computed at compile time (the SCC reader's 64 Ki hex pairs) take more
# evaluation steps than clang allows by default; GCC's limits are higher.
add_compile_options($<$<CXX_COMPILER_ID:Clang>:-fconstexpr-steps=33554432>)
if(CORVALA_WERROR)
    add_compile_options(-Werror)
endif()

if(CORVALA_SANITIZE)
    add_compile_options(-fsanitize=${CORVALA_SANITIZE} -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${CORVALA_SANITIZE})
endif()

if(CORVALA_FUZZ)
    # Libraries get coverage instrumentation; the harness links the fuzzer's main.
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
