uniform vec2 iResolution;
in vec4 position;
in vec2 uv1;
out vec4 gl_Position;
out vec2 tc;
out vec3 normal;
out float line;
out vec2 pairs[2];
void main() {
    gl_Position = vec4(position.xy * 2.0 - 1.0, 0.0, 1.0);
    tc = uv1;
    normal = vec3(position.xy, 1.0);
    line = normal.r;
    pairs[0] = tc;
    pairs[1] = tc.yx;
}
