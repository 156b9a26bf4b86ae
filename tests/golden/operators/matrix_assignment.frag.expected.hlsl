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

};

float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
float3 v = float3( tc, 1.0f);
float4 w = float4( v, 1.0f);
float4x4 n =  m4;
 tc = mul( tc,  m2);
 v = mul( v,  m3);
 w = mul( w,  m4);
 n = mul( m4,  n);
 n *= 2.0f;
return (mul(( w + float4( v,  tc.x)),  n));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    