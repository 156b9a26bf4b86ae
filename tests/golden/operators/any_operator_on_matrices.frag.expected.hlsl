@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

cbuffer MyConstantBuffer : register(b0)
{
float2 iResolution;
float2x2 m;
float2x2 n;

};

float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
float2x2 sum = (mul( n,  m));
float2x2 quotient = (mul( n,  m));
float2 difference = (mul( tc,  m));
return float4((mul( tc,  sum)), (mul( difference,  quotient)));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    