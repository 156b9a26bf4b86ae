// inputs=1
uniform vec2 iResolution;
vec4 FUNCNAME(vec2 tc) { return INPUT1(tc) * 0.5; }
