// Segment "shape", variant 0. Distance to the shape, below zero inside it.
float shapeDistance(vec2 place) {
    return length(place) - 0.8;
}
