# GLEW for MinGW-w64 as a shared glew32.dll with its import library, from the distribution's
# source package. Sourced by setup.sh.
#
# The library brings a DLL entry point of its own, so it is linked without the start-up files and
# the compiler may not turn its loops into calls of the C library.

glew_folder() { echo "glew-$(recipe_key "$deps_dir/glew.sh" "$(toolchain_key)")"; }

build_glew() {
    local work=$1 result=$2
    fetch_source glew "$work/source"
    mkdir -p "$result/bin" "$result/lib" "$result/include"
    "$mingw-gcc-posix" -O2 -DNDEBUG -DGLEW_NO_GLU -DGLEW_BUILD -fno-builtin -fno-stack-protector \
        -I"$work/source/include" -c "$work/source/src/glew.c" -o "$work/glew.o"
    "$mingw-gcc-posix" -shared -nostdlib "$work/glew.o" -o "$result/bin/glew32.dll" \
        -Wl,--out-implib,"$result/lib/libglew32.dll.a" \
        -lopengl32 -lgdi32 -luser32 -lkernel32
    cp -r "$work/source/include/GL" "$result/include/"
}
