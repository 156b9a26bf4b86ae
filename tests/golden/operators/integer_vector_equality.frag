bool f(ivec2 a, ivec2 b, vec2 c) {
    a == b;
    a != b;
    1.0 == c;
    return c == 1.0;
}
