# Warnings are errors in our own code; link this target into each of ours and into nothing else's.
add_library(orvane_warnings INTERFACE)
target_compile_options(orvane_warnings INTERFACE
    $<$<NOT:$<CXX_COMPILER_ID:MSVC>>:-Wall -Wextra -Wconversion -Wshadow -Wnon-virtual-dtor -Werror>
    $<$<CXX_COMPILER_ID:MSVC>:/W4 /WX>)
