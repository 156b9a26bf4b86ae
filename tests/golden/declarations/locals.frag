uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a, b = 1.0;
    const float k = 0.5;
    int line = 2;
    vec3 rest;
    b += a * k + line;
    return vec4(rest, b);
}
