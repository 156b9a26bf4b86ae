@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;
    float3 shade : __shade;

};

cbuffer MyConstantBuffer : register(b0)
{
float2 iResolution;

};
Texture2D INPUT1 : register(t0);
SamplerState INPUT1_SAMPLER : register(s0);

float2 TransTc(float2 tc, VertexOutput input, float4 gl_FragCoord) {
return float2( tc.x, (1.0f -  tc.y));
return float2(gloabal_float2_Constructor(0.0f));
}
float2 MovTc(float2 tc, VertexOutput input, float4 gl_FragCoord) {
return  tc;
return float2(gloabal_float2_Constructor(0.0f));
}
float4 TransV(float4 v, VertexOutput input, float4 gl_FragCoord) {
 v.y *= -1.0f;
return  v;
return float4(gloabal_float4_Constructor(0.0f));
}
float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
return ((INPUT1.Sample(INPUT1_SAMPLER, GLOBAL_TRANS_TC(MovTc( tc, input, gl_FragCoord))).zyxw *  gl_FragCoord.xxyy) * input.shade.x);
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, input.gl_Position.z / input.gl_Position.w, 1.0);
    return FUNCNAME(input.tc, input, gl_FragCoord).zyxw;
}
    