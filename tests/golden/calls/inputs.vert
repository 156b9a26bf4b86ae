// inputs=2 audio=1
uniform vec2 iResolution;
in vec4 position;
out vec4 gl_Position;
out vec2 tc;
void main() {
    vec4 a = INPUT2(position.xy) + DEPTH_INPUT(tc) + DEPTH_INPUT2(tc);
    tc = position.xy;
    gl_Position = a + AUDIO_INPUT1(tc);
}
