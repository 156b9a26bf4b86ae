// The background that the sparks fly over.

vec4 FUNCNAME(vec2 tc) {
    return vec4(INPUT1(tc).rgb * PREFIX(dim), 1.0);
}
