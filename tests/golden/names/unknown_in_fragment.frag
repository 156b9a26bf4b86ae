in vec2 q;
out vec4 colour;
void f() {
    colour.rg = q.st;
}
