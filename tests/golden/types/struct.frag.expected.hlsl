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

struct Light {
float3 colour;
float power;
};
static struct Light lamp;
float3 shine(struct Light light, VertexOutput input, float4 gl_FragCoord) {
return ( light.colour *  light.power);
return float3(gloabal_float3_Constructor(0.0f));
}
float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
struct Light light =  lamp;
 light.colour = float3(1.0f, 0.5f,  tc.x);
 light.power = 2.0f;
return float4(shine( light, input, gl_FragCoord), 1.0f);
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    