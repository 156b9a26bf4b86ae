uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    vec4 c = vec4(tc.st, tc.yx);
    c.rgb = c.bgr;
    c.a = c.stpq.q + c.s;
    c.ba = c.xy;
    ivec3 i = ivec3(1, 2, 3);
    return c.bgra * i.rrgg.x;
}
