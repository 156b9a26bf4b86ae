// Segment "shape", variant 2.
float shapeDistance(vec2 place) {
    vec2 folded = vec2(abs(place.x), place.y + 0.15) * 1.05;
    float lower = max(folded.x, 0.0) * 0.78 - folded.y * 0.62 - 0.45;
    float bow = length(folded - vec2(0.42, 0.33)) - 0.52;
    float square = dot(abs(folded - vec2(0.0, 0.02)), vec2(0.7071, 0.7071)) - 0.57;
    return min(bow, max(square, lower));
}
