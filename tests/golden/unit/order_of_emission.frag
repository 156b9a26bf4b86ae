// inputs=1 audio=1
void first() { }
uniform Block { float inBlock; };
float global = 1.0;
struct S { float a; };
const float K = 2.0;
uniform float u;
S second;
