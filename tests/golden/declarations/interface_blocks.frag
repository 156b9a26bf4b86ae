uniform Params {
    vec2 size;
    float line;
};
in Inputs {
    vec3 normal;
} inputs;
vec3 f() {
    return inputs.normal * size.x;
}
