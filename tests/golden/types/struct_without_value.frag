struct S { float a; };
S f(S p) {
    S local;
    return p;
}
