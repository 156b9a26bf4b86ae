// inputs=1

#define __ANDROID__
#define customize_in in
#define highp 
#define mediump 
#define lowp 
vec2 TransTc(vec2 tc)
{ 
    return vec2(tc.x, 1.0 - tc.y); 
}
vec2  MovTc(vec2 tc)
{ 
    return tc; 
}
vec4 TransV(vec4 v)
{ 
    v.y*=-1.0; 
    return v; 
}
vec4 gl_FragCoord;
uniform vec2 iResolution;
customize_in vec3 shade;
vec4 FUNCNAME(vec2 tc) {
    return INPUT1(MovTc(tc)) * gl_FragCoord.xxyy * shade.r;
}
