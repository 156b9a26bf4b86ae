@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

void f(float2x2 m, float a, VertexOutput input, float4 gl_FragCoord) {
 {
 m[0];
}
for(;;) a;

[loop]
for(;;) a;

[loop]
for(( a = 0.0f,  a = 1.0f);;);
[loop]
for(int i = 0;int j = 1; ( i <  j);)discard;
return ;
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    