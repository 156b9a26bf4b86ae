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
float3 a = float3( tc, 1.0f);
float4 b = float4( a, 1.0f);
bool q = (global_is_equal_vec2( tc,  tc.yx));
if(((global_is_equal_vec3( a,  a.zyx)) || (global_is_not_equal_vec4( b,  b.wzyx)))) {
 q = (global_is_not_equal_vec2( tc, float2(0.5f, 0.5f)));
}
if( q) {
return  b;
}
return float4(0.0f, 0.0f, 0.0f, 1.0f);
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    