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
float w[3] = {float(0.0f), float(0.0f), float(0.0f)};
float2 offsets[2] = {float2(0.0f, 0.0f), float2(0.0f, 0.0f)};
int n[2] = {int(0), int(0)};
 w[1] =  tc.x;
 offsets[0] =  tc;
return float4( w[1],  offsets[0],  n[1]);
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    