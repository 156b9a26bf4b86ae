void f(mat2 m, float a) {
    { m[0]; }
    for (;;) a;
    for (;;) a;
    for (a = 0.0, a = 1.0;;) ;
    for (int i = 0, j = 1; i < j;) discard;
}
