#define K (2.0f)
@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

cbuffer MyConstantBuffer : register(b0)
{
float u;

};
Texture2D INPUT1 : register(t0);
SamplerState INPUT1_SAMPLER : register(s0);
Texture2D AUDIO_INPUT1 : register(t1);
SamplerState AUDIO_INPUT1_SAMPLER : register(s1);

struct S {
float a;
};
static float global = 1.0f;
static struct S second;
Block {
float inBlock;
};
void first(VertexOutput input, float4 gl_FragCoord) {
return ;
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    