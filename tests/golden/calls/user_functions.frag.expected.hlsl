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

float luma(float3 c, VertexOutput input, float4 gl_FragCoord) {
return dot( c, float3(0.2989999949932098f, 0.5870000123977661f, 0.1140000000596046f));
return float(0.0f);
}
float half_way(VertexOutput input, float4 gl_FragCoord) {
return (0.25f * 0.5f);
return float(0.0f);
}
float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
return float4(gloabal_float4_Constructor((luma(float3( tc, 1.0f), input, gl_FragCoord) * half_way(input, gl_FragCoord))));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    