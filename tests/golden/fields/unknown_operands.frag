struct S { float a; vec3 rgb; };
void f(S s, ivec2 i, mat2 m, float x) {
    s.a;
    s.rgb;
    (i + i).rg;
    m[0].st;
    x.r;
}
