
in vec4 position;
in vec4 texcoord;
out vec4 gl_Position;
out vec2 tc;
#define customize_in in
#define customize_out out
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
uniform vec2 iResolution;
customize_out vec3 shade;
void main() {
    shade = vec3(texcoord.xy, 1.0);
    tc = TransTc(texcoord.xy);
    gl_Position = TransV(position);
}
