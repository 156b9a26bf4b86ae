void f(sampler2D s, vec2 tc) {
    texture(s, tc);
    texture2D(s, tc);
    line(1.0);
    INPUTS(tc);
}
