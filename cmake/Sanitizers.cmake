# ORVANE_SANITIZE: "" (none), "address" (with undefined behaviour) or "thread"; for everything in
# the build, GoogleTest included. A finding ends the program with an error. With clang also "fuzz"
# (as "address", with the fuzzer's own counters) and "coverage" (lines that were reached).
set(ORVANE_SANITIZE "" CACHE STRING
    "sanitizer of the whole build: address, thread, fuzz, coverage or none")
if(ORVANE_SANITIZE STREQUAL "address")
    set(sanitize_flags -fsanitize=address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
elseif(ORVANE_SANITIZE STREQUAL "thread")
    set(sanitize_flags -fsanitize=thread -fno-omit-frame-pointer)
elseif(ORVANE_SANITIZE STREQUAL "fuzz")
    set(sanitize_flags -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
elseif(ORVANE_SANITIZE STREQUAL "coverage")
    set(sanitize_flags -fprofile-instr-generate -fcoverage-mapping)
elseif(ORVANE_SANITIZE)
    message(FATAL_ERROR "ORVANE_SANITIZE: unknown sanitizer ${ORVANE_SANITIZE}")
endif()
add_compile_options(${sanitize_flags})
add_link_options(${sanitize_flags})
