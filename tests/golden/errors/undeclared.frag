vec4 FUNCNAME(vec2 tc) {
    return vec4(colr, 1.0);
}
