@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

void f(float4 v, float4x4 m, int3 i, VertexOutput input, float4 gl_FragCoord) {
p(float3(gloabal_float3_Constructor( v)), float3x3(gloabal_float3x3_Constructor( m)), float3( i), true);
p(float2x2(), uvec2(1, 2), double());
return ;
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    