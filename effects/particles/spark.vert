// One spark: a small square that flies out of the fountain and falls. Drawn once per instance, each
// time with the next `seed`.

customize_out vec4 tint;

void main() {
    vec4 chance = PREFIX_DRAW_INSTANCE(seed);
    float age = fract(chance.w + PREFIX(time));
    float angle = (chance.x - 0.5) * 1.1;
    float speed = 2.4 + 2.0 * chance.y;
    vec2 flight = vec2(sin(angle), cos(angle)) * speed * age;
    flight.y -= 3.0 * age * age;

    float aspect = PREFIX(iResolution).x / PREFIX(iResolution).y;
    float size = PREFIX(size) * (0.35 + chance.z) * (0.4 + 0.6 * age);
    vec2 corner = (position.xy * 2.0 - 1.0) * size;
    vec2 place = vec2(0.0, -0.95) + flight + corner;
    gl_Position = TransV(vec4(place.x / aspect, place.y, 0.0, 1.0));

    vec3 young = vec3(1.0, 0.85, 0.45);
    vec3 old = mix(vec3(0.95, 0.25, 0.15), vec3(0.35, 0.35, 1.0), chance.z);
    tint = vec4(mix(young, old, age), (1.0 - age) * smoothstep(0.0, 0.15, age));
    tc = position.xy;
}
