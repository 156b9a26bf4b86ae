uniform vec2 iResolution;

struct Light {
    vec3 colour;
    float power;
};
vec3 shine(Light light) {
    return light.colour * light.power;
}
Light lamp;
vec4 FUNCNAME(vec2 tc) {
    Light light = lamp;
    light.colour = vec3(1.0, 0.5, tc.x);
    light.power = 2.0;
    return vec4(shine(light), 1.0);
}
