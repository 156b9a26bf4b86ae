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
float a =  tc.x;
while(( a < 1.0f)) a += 0.25f;
do {
 a *= 0.5f;
if(( a < 0.1000000014901161f))continue;
}
while(( a > 0.25f));
do  a += 0.1000000014901161f;
while(( a < 0.5f));
return float4(gloabal_float4_Constructor( a));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    