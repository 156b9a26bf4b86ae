// Mirrors one sector of the picture around a centre.

#define PI 3.14159265
#define TURN(degrees) (degrees) * PI / 180.0

vec4 FUNCNAME(vec2 tc) {
    float aspect = PREFIX(iResolution).x / PREFIX(iResolution).y;
    vec2 place = (tc - PREFIX(center)) * vec2(aspect, 1.0);
    float radius = length(place);
    float angle = atan(place.y, place.x) + TURN(PREFIX(spin));

    float sector = 2.0 * PI / float(PREFIX(sectors));
    angle = abs(angle - sector * floor(angle / sector + 0.5));

    vec2 folded = vec2(cos(angle), sin(angle)) * radius * PREFIX(zoom);
    vec4 color = INPUT1(folded / vec2(aspect, 1.0) + PREFIX(source));
    float rim = 1.0 - smoothstep(0.3, 1.1, radius);
    return vec4(color.rgb * (0.45 + 0.55 * rim), 1.0);
}
