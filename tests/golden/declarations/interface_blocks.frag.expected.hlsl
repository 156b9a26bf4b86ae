@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

static struct Inputs inputs;
Params {
float2 size;
float AVOID_KEYWORD_CONFLICTS_line;
};
in Inputs {
float3 normal;
};
float3 f(VertexOutput input, float4 gl_FragCoord) {
return ( inputs.normal * input.size.x);
return float3(gloabal_float3_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    