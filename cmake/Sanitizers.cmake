# ORVANE_SANITIZE: "" (none), "address" (with undefined behaviour) or "thread"; for everything in
# the build, GoogleTest included. A finding ends the program with an error.
set(ORVANE_SANITIZE "" CACHE STRING "sanitizer of the whole build: address, thread or none")
if(ORVANE_SANITIZE STREQUAL "address")
    set(sanitize_flags -fsanitize=address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
elseif(ORVANE_SANITIZE STREQUAL "thread")
    set(sanitize_flags -fsanitize=thread -fno-omit-frame-pointer)
elseif(ORVANE_SANITIZE)
    message(FATAL_ERROR "ORVANE_SANITIZE: unknown sanitizer ${ORVANE_SANITIZE}")
endif()
add_compile_options(${sanitize_flags})
add_link_options(${sanitize_flags})
