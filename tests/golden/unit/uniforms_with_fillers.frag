uniform int PREFIX_mode;
#define USE_X 1
uniform float PREFIX_amount;
uniform float PLACEHOLDER_VALUE_0;
uniform float PLACEHOLDER_VALUE_1;
uniform vec2 iResolution;
uniform float PLACEHOLDER_VALUE_2;
uniform float PLACEHOLDER_VALUE_3;
uniform vec2 iResolutionOrig;
uniform float PLACEHOLDER_VALUE_4;
uniform float PLACEHOLDER_VALUE_5;
uniform vec3 PREFIX_tint;
uniform float PLACEHOLDER_VALUE_6;
uniform mat3 PREFIX_m;
uniform float PREFIX_w[4];
vec4 FUNCNAME(vec2 tc) {
    vec3 c = PREFIX_m * PREFIX_tint * PREFIX_amount;
    return vec4(c * USE_X, PREFIX_w[1] + PREFIX_mode);
}
