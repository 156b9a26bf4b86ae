void f(int n) {
    float a[2][3];
    float b[n];
    float c[0];
    float d[2] = n;
}
