uniform vec2 iResolution;
in vec4 position;
out vec4 gl_Position;
uniform mat4 mvp;
const float SCALE = 2.0;
float offset = 0.5;
vec4 place(vec4 p) {
    return mvp * vec4(p.xy * SCALE - offset, p.zw);
}
void main() {
    vec4 p = place(position);
    if (p == position) return;
    gl_Position = p;
}
