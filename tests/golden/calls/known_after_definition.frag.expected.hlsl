@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

float before(VertexOutput input, float4 gl_FragCoord) {
return helper(1.0f);
return float(0.0f);
}
float helper(float a, VertexOutput input, float4 gl_FragCoord) {
return (helper( a) + max( a, 1.0f));
return float(0.0f);
}
float after(VertexOutput input, float4 gl_FragCoord) {
return helper(1.0f, input, gl_FragCoord);
return float(0.0f);
}
float AVOID_KEYWORD_CONFLICTS_max(float a, float b, VertexOutput input, float4 gl_FragCoord) {
return  a;
return float(0.0f);
}
float later(VertexOutput input, float4 gl_FragCoord) {
return (max(1.0f, 2.0f) + declared(1.0f));
return float(0.0f);
}
float declared(float, VertexOutput input, float4 gl_FragCoord);
float last(VertexOutput input, float4 gl_FragCoord) {
return declared(1.0f, input, gl_FragCoord);
return float(0.0f);
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    