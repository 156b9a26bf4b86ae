void f(float a, float b, float c) {
    a - b - c;
    a - (b - c);
    a + b * c;
    (a + b) * c;
    (a = b).x;
    -(a = b);
    -(-a);
}
