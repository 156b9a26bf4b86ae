@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

void f(sampler2D s, float2 tc, VertexOutput input, float4 gl_FragCoord) {
AVOID_KEYWORD_CONFLICTS_texture( s,  tc);
texture2D( s,  tc);
AVOID_KEYWORD_CONFLICTS_line(1.0f);
INPUTS( tc);
return ;
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    