struct A { float c; };
struct B { A b; };
float f(B a) {
    return a.b.c;
}
