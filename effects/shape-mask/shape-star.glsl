// Segment "shape", variant 1: five points.
float shapeDistance(vec2 place) {
    float fifth = 1.25663706;
    float angle = atan(place.x, place.y);
    angle = abs(angle - fifth * floor(angle / fifth + 0.5));
    vec2 folded = vec2(sin(angle), cos(angle)) * length(place);
    return dot(folded - vec2(0.0, 0.95), vec2(0.75, 0.42)) / 0.86;
}
