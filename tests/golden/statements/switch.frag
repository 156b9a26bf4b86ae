uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    float a = 0.0;
    switch (int(tc.x * 3.0)) {
        case 0:
        case 1:
            a = 1.0;
            break;
        default:
            a = 0.5;
            break;
    }
    return vec4(a);
}
