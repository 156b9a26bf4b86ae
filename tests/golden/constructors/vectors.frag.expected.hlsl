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
float2 a = ((float2(gloabal_float2_Constructor(0.0f)) + float2(gloabal_float2_Constructor(1.0f))) + float2( tc));
float3 b = ((float3(gloabal_float3_Constructor(0.0f)) + float3(gloabal_float3_Constructor( tc.x))) + float3( tc, 1.0f));
int2 c = int2(gloabal_int2_Constructor(0));
int3 d = int3(gloabal_int3_Constructor(2));
int4 e = int4(1, 2, 3, 4);
float2 f = float2( c);
float4 g = (((float4( b.xyz, 1.0f) + float4(gloabal_float4_Constructor(0.0f))) + float4( a,  f)) + float4( d.x,  e.y, 0, 0));
return  g;
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    