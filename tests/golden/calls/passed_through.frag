uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    vec3 v = normalize(vec3(tc, 1.0));
    v = clamp(pow(abs(v), 2.0), 0.0, 1.0) * smoothstep(0.0, 1.0, v.yzx);
    float d = dot(v, v.zxy) + length(v) + distance(v, v.yxz);
    return vec4(cross(v, v.yzx), step(0.5, d));
}
