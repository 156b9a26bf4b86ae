uvec2 a;
bvec3 b;
mat2x3 c;
dmat4 d;
sampler2D e;
FilterData f;
void g(dvec2 h, string i) {
    uvec4 j;
}
