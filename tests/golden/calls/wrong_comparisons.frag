void f(ivec2 i, float a) {
    lessThan(i, i);
    greaterThan(a);
    mix(a, a);
    atan(a, a, a);
    g(i + i);
}
