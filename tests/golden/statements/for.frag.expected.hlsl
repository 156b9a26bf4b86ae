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
float4 sum = float4(gloabal_float4_Constructor(0.0f));

[loop]
for(int i = 0; ( i < 4); ++ i) {

[loop]
for(int j = 0; ( j < 4);  j++) sum += INPUT1.Sample(INPUT1_SAMPLER, GLOBAL_TRANS_TC(( tc + (float2( i,  j) * 0.0099999997764826f)))).zyxw;
}
return ( sum / 16.0f);
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    