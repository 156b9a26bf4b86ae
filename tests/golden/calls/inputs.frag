// inputs=2 audio=1
uniform vec2 iResolution;

vec4 FUNCNAME(vec2 tc) {
    vec4 a = INPUT(tc) + INPUT1(tc) + INPUT2(tc.yx);
    vec4 b = AUDIO_INPUT1(vec2(tc.x, 0.0));
    vec4 c = DEPTH_INPUT(tc) + DEPTH_INPUT2(tc);
    return a * b + c;
}
