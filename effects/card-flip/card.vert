// Turns the picture like a card around its upright axis, seen in perspective.

customize_out float facing;

void main() {
    float aspect = PREFIX(iResolution).x / PREFIX(iResolution).y;
    vec2 corner = (position.xy * 2.0 - 1.0) * vec2(aspect, 1.0);
    float angle = PREFIX(progress) * 3.14159265;
    float across = corner.x * cos(angle);
    float away = corner.x * sin(angle);

    // At both ends of the way the card fills the frame; in between it steps back.
    float back = 1.6 * sin(angle);
    float eye = 3.0;
    float reach = (eye + back + away) / eye;
    facing = cos(angle);
    gl_Position = TransV(vec4(across / aspect, corner.y, 0.5 * reach, reach));
    tc = position.xy;
}
