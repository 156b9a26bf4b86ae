// Waves a grid of 48 x 24 cells in the wind. The grid's corners are shared: an element list says
// which three make a triangle.

#include "../lib/camera.glsl"

customize_out float slope;

float waveAt(vec2 place) {
    return sin(place.x * 11.0 + place.y * 2.0 - PREFIX(time) * 6.28318531) * 0.11 * place.x;
}

void main() {
    vec2 spot = position.xy;
    float lift = waveAt(spot);
    slope = (waveAt(spot + vec2(0.01, 0.0)) - lift) * 100.0;
    vec3 place = vec3((spot.x - 0.5) * 2.9, (spot.y - 0.5) * 1.75 - 0.12 * spot.x, lift * 2.0);
    float aspect = PREFIX(iResolution).x / PREFIX(iResolution).y;
    gl_Position = projected(turned(place, PREFIX(yaw), 0.15), 4.0, 3.0, aspect);
    tc = spot;
}
