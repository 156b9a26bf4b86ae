// Shows the picture with its brightness turned round, as far as `amount` says.

vec4 FUNCNAME(vec2 tc) {
    vec4 color = INPUT1(tc);
    return vec4(mix(color.rgb, 1.0 - color.rgb, PREFIX(amount)), color.a);
}
