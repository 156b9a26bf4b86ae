@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

cbuffer MyConstantBuffer : register(b0)
{
float2x2 m;

};

void f(float env__________isDidMatArraySubScriptObject, bool HAVE_FUNC_p, VertexOutput input, float4 gl_FragCoord) {
for(;;)p(1.0f, input, gl_FragCoord);
return ;
}
float2 g(float2 MyConstantBuffer_x, float isVertexShader, VertexInput input) {
return INPUT1.SampleLevel(INPUT1_SAMPLER, GLOBAL_TRANS_TC( MyConstantBuffer_x), 0.0f).zyxw.xy;
return float2(gloabal_float2_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    