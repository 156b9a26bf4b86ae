@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

cbuffer MyConstantBuffer : register(b0)
{
float2 iResolution;
float2x2 m2;
float3x3 m3;
float4x4 m4;
float4x4 n4;

};

float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
float2 a = ((mul( tc,  m2)) + (mul( tc,  m2)));
float3 b = (mul(float3( tc, 1.0f), (mul( m3,  m3))));
return (mul((mul(float4( a,  b.xy), (mul( n4,  m4)))),  m4));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    