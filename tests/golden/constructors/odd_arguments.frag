void f(vec4 v, mat4 m, ivec3 i) {
    p(vec3(v), mat3(m), vec3(i), bool(false));
    p(mat2(1.0, 2.0, 3.0), uvec2(1, 2), double());
}
