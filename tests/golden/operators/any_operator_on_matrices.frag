uniform vec2 iResolution;

uniform mat2 m, n;
vec4 FUNCNAME(vec2 tc) {
    mat2 sum = m + n;
    mat2 quotient = m / n;
    vec2 difference = m - tc;
    return vec4(sum * tc, quotient * difference);
}
