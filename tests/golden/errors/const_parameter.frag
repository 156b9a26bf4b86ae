float f(const float a) {
    return a;
}
