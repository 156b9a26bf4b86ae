void f(mat4 m, vec4 v, float s) {
    m * s * v;
    m * (s * v);
    v * s * m;
    m == v;
}
