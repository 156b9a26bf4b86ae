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

float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
float2x2 a = (mul(float2x2(1.0f, 0.0f, 0.0f, 1.0f), (mul(float2x2( tc,  tc.yx), (mul(float2x2(gloabal_float2x2_Constructor(2.0f)), float2x2(gloabal_float2x2_Constructor(1.0f))))))));
float3x3 b = (mul(float3x3(gloabal_float3x3_Constructor(0.5f)), float3x3(gloabal_float3x3_Constructor(1.0f))));
float4x4 c = (mul(float4x4(gloabal_float4x4_Constructor(1.0f)), float4x4(gloabal_float4x4_Constructor(1.0f))));
return (mul(float4((mul( tc,  a)), (mul(float3( tc, 1.0f),  b)).xy),  c));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    