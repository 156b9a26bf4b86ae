// A round glow in its square, added to what is there.

customize_in vec4 tint;

vec4 FUNCNAME(vec2 tc) {
    float far = length(tc * 2.0 - 1.0);
    float glow = 1.4 * pow(max(1.0 - far, 0.0), 2.0) * tint.a;
    return vec4(tint.rgb * glow, glow);
}
