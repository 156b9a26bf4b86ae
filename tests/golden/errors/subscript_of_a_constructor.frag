float f() {
    return vec2(1.0)[0];
}
