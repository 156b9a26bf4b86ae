@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

cbuffer MyConstantBuffer : register(b0)
{
float2 iResolution;

};
Texture2D INPUT1 : register(t0);
SamplerState INPUT1_SAMPLER : register(s0);

float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
return (INPUT1.Sample(INPUT1_SAMPLER, GLOBAL_TRANS_TC( tc)).zyxw * 0.5f);
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    