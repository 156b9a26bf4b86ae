@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;
    float3 normal : __normal;
    float AVOID_KEYWORD_CONFLICTS_line : __AVOID_KEYWORD_CONFLICTS_line;
    float2 pairs[2] : __pairs;

};

cbuffer MyConstantBuffer : register(b0)
{
float2 iResolution;

};

float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
return float4((input.normal.xy * input.AVOID_KEYWORD_CONFLICTS_line), (input.pairs[0] + input.pairs[1]));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, input.gl_Position.z / input.gl_Position.w, 1.0);
    return FUNCNAME(input.tc, input, gl_FragCoord).zyxw;
}
    