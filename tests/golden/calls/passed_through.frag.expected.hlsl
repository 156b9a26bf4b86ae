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
float3 v = normalize(float3( tc, 1.0f));
 v = (clamp(pow(abs( v), 2.0f), 0.0f, 1.0f) * smoothstep(0.0f, 1.0f,  v.yzx));
float d = ((dot( v,  v.zxy) + length( v)) + distance( v,  v.yxz));
return float4(cross( v,  v.yzx), step(0.5f,  d));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    