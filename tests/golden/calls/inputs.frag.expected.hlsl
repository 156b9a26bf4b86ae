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
Texture2D AUDIO_INPUT1 : register(t2);
SamplerState AUDIO_INPUT1_SAMPLER : register(s2);

float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
float4 a = ((INPUT1.Sample(INPUT1_SAMPLER, GLOBAL_TRANS_TC( tc)).zyxw + INPUT1.Sample(INPUT1_SAMPLER, GLOBAL_TRANS_TC( tc)).zyxw) + INPUT2.Sample(INPUT2_SAMPLER, GLOBAL_TRANS_TC( tc.yx)).zyxw);
float4 b = AUDIO_INPUT1.Sample(AUDIO_INPUT1_SAMPLER, GLOBAL_TRANS_TC(float2( tc.x, 0.0f))).zzzz;
float4 c = (global_depth_input(INPUT1, INPUT1_SAMPLER, GLOBAL_TRANS_TC( tc)) + global_depth_input(INPUT2, INPUT2_SAMPLER, GLOBAL_TRANS_TC( tc)));
return (( a *  b) +  c);
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, input.gl_Position.z / input.gl_Position.w, 1.0);
    return FUNCNAME(input.tc, input, gl_FragCoord).zyxw;
}
    