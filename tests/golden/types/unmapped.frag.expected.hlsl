@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

static uvec2 a;
static bvec3 b;
static mat2x3 c;
static dmat4 d;
static sampler2D e;
static FilterData f;
void g(dvec2 h, string i, VertexOutput input, float4 gl_FragCoord) {
uvec4 j = uvec4();
return ;
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    