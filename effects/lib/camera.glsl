// A camera for vertex shaders: turns a place in space and projects it.

vec3 turned(vec3 place, float yaw, float pitch) {
    float across = place.x * cos(yaw) + place.z * sin(yaw);
    float deep = place.z * cos(yaw) - place.x * sin(yaw);
    float height = place.y * cos(pitch) - deep * sin(pitch);
    return vec3(across, height, deep * cos(pitch) + place.y * sin(pitch));
}

// Clip position of a place seen from `distanceBack` along z. Depth runs from 0 at the near plane
// to 1 at the far one, as the library's depth buffer wants it; y points up.
vec4 projected(vec3 place, float distanceBack, float zoom, float aspect) {
    float ahead = distanceBack - place.z;
    float nearPlane = 0.5;
    float farPlane = 20.0;
    float depth = farPlane * (ahead - nearPlane) / (farPlane - nearPlane);
    return TransV(vec4(place.x * zoom / aspect, place.y * zoom, depth, ahead));
}
