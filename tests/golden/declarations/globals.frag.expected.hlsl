@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

static float plain;
static float value = 1.5f;
static float2 pair = float2(gloabal_float2_Constructor(1.0f));
static float3 many[2];
static float3 more[];
static float AVOID_KEYWORD_CONFLICTS_line;
static attribute float2 a;
static varying flat int b;
static shared coherent float c;
static buffer float d;
static varying centroid noperspective float2 e;


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    