void f(out float a[2], inout float b[2], float, coherent vec2 c) {
}
