// Lights a solid body by a warm lamp and a cool sky, with INPUT1 painted on it.

customize_in vec3 normal;
customize_in vec3 place;

vec4 FUNCNAME(vec2 tc) {
    vec3 facing = normalize(normal);
    vec3 lamp = normalize(vec3(0.5, 0.9, 0.8));
    vec3 eye = normalize(vec3(0.0, 0.0, 5.0) - place);
    vec3 halfway = normalize(lamp + eye);

    vec3 paint = mix(INPUT1(tc).rgb, vec3(0.85, 0.80, 0.78), PREFIX(paint));
    float direct = max(dot(facing, lamp), 0.0);
    float sky = 0.5 + 0.5 * facing.y;
    float shine = pow(max(dot(facing, halfway), 0.0), 48.0);
    float rim = pow(1.0 - max(dot(facing, eye), 0.0), 3.0);

    vec3 color = paint * (vec3(1.0, 0.92, 0.80) * direct + vec3(0.16, 0.20, 0.30) * (0.4 + sky));
    color += vec3(1.0, 0.95, 0.85) * shine * 0.8 + vec3(0.35, 0.5, 0.8) * rim * 0.6;
    return vec4(color, 1.0);
}
