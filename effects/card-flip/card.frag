// The front of the card shows INPUT1, its back INPUT2.

customize_in float facing;

vec4 FUNCNAME(vec2 tc) {
    vec3 color = INPUT1(tc).rgb;
    if (facing < 0.0) {
        color = INPUT2(vec2(1.0 - tc.x, tc.y)).rgb;
    }
    float light = 0.5 + 0.5 * abs(facing);
    return vec4(color * light, 1.0);
}
