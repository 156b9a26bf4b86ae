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

float AVOID_KEYWORD_CONFLICTS_point(float AVOID_KEYWORD_CONFLICTS_line, float2 AVOID_KEYWORD_CONFLICTS_vector, VertexOutput input, float4 gl_FragCoord) {
float AVOID_KEYWORD_CONFLICTS_max = ( AVOID_KEYWORD_CONFLICTS_line +  AVOID_KEYWORD_CONFLICTS_vector.x);
return  AVOID_KEYWORD_CONFLICTS_max;
return float(0.0f);
}
float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
float2 AVOID_KEYWORD_CONFLICTS_texture =  tc;
return float4(gloabal_float4_Constructor(max(AVOID_KEYWORD_CONFLICTS_point(1.0f,  AVOID_KEYWORD_CONFLICTS_texture, input, gl_FragCoord), 0.0f)));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    