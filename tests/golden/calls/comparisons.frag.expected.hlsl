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
float a = (gloabal_lessThan( tc.x, 0.5f) + gloabal_greaterThan( tc.y, 0.5f));
float2 b = (gloabal_lessThan2( tc,  tc.yx) + gloabal_greaterThan2( tc,  tc.yx));
float3 c = gloabal_lessThan3(float3( tc, 1.0f), float3(gloabal_float3_Constructor(0.5f)));
float4 d = gloabal_greaterThan4(float4( tc,  tc), float4( c, 1.0f));
return ( d + float4( a,  b, 1.0f));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    