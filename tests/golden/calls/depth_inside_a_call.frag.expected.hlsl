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
Texture2D INPUT2 : register(t1);
SamplerState INPUT2_SAMPLER : register(s1);

float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
float4 twice = (abs(INPUT2.Sample(INPUT2_SAMPLER, GLOBAL_TRANS_TC( tc)).zyxw) + float4(INPUT2.Sample(INPUT2_SAMPLER, GLOBAL_TRANS_TC( tc)).zyxw));
float4 once = (lerp(global_depth_input(INPUT2, INPUT2_SAMPLER, GLOBAL_TRANS_TC( tc)),  twice, 0.5f));
return ( once + abs(global_depth_input(INPUT1, INPUT1_SAMPLER, GLOBAL_TRANS_TC( tc))));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    