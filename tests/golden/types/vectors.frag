uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    vec2 a;
    vec3 b;
    vec4 c;
    ivec2 d;
    ivec3 e;
    ivec4 f;
    c.xy = a + tc;
    c.z = b.x + d.x;
    return c + vec4(e.x, f.y, 0.0, 1.0);
}
