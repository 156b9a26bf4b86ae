// Bends a flat grid into a knotted tube. x of the grid runs along the tube, y around it.

#include "../lib/camera.glsl"

#define FULL_TURN 6.28318531

customize_out vec3 normal;
customize_out vec3 place;

vec3 knot(float angle) {
    float reach = 1.0 + 0.42 * cos(3.0 * angle);
    return vec3(reach * cos(2.0 * angle), reach * sin(2.0 * angle), 0.5 * sin(3.0 * angle));
}

void main() {
    float along = position.x * FULL_TURN;
    float around = position.y * FULL_TURN;
    vec3 center = knot(along);
    vec3 ahead = normalize(knot(along + 0.01) - center);
    vec3 side = normalize(cross(ahead, center));
    vec3 up = cross(side, ahead);
    vec3 outward = cos(around) * side + sin(around) * up;

    normal = turned(outward, PREFIX(yaw), PREFIX(pitch));
    place = turned(center + outward * PREFIX(thickness), PREFIX(yaw), PREFIX(pitch));
    float aspect = PREFIX(iResolution).x / PREFIX(iResolution).y;
    gl_Position = projected(place, 5.0, 2.6, aspect);
    tc = vec2(position.x * 24.0, position.y * 2.0);
}
