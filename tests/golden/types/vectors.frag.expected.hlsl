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
float2 a = float2(0.0f, 0.0f);
float3 b = float3(0.0f, 0.0f, 0.0f);
float4 c = float4(0.0f, 0.0f, 0.0f, 0.0f);
int2 d = int2(0, 0);
int3 e = int3(0, 0, 0);
int4 f = int4(0, 0, 0, 0);
 c.xy = ( a +  tc);
 c.z = ( b.x +  d.x);
return ( c + float4( e.x,  f.y, 0.0f, 1.0f));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    