@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

bool f(int2 a, int2 b, float2 c, VertexOutput input, float4 gl_FragCoord) {
( a ==  b);
( a !=  b);
(1.0f ==  c);
return (global_is_equal_vec2( c, 1.0f));
return true;
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    