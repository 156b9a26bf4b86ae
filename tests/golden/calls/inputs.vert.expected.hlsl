static float4 gl_Position;
static float2 tc;
@prelude@

struct VertexInput
{
    float4 position : position;

};

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

cbuffer MyConstantBuffer : register(b0)
{
float2 iResolution;

};
Texture2D INPUT1 : register(t0);
SamplerState INPUT1_SAMPLER : register(s0);
Texture2D INPUT2 : register(t1);
SamplerState INPUT2_SAMPLER : register(s1);
Texture2D AUDIO_INPUT1 : register(t2);
SamplerState AUDIO_INPUT1_SAMPLER : register(s2);


void main(VertexInput input)
{
float4 a = ((INPUT2.SampleLevel(INPUT2_SAMPLER, GLOBAL_TRANS_TC(input.position.xy), 0.0f).zyxw + global_depth_input_level(INPUT1, INPUT1_SAMPLER, GLOBAL_TRANS_TC(tc))) + global_depth_input_level(INPUT2, INPUT2_SAMPLER, GLOBAL_TRANS_TC(tc)));
tc = input.position.xy;
gl_Position = ( a + AUDIO_INPUT1.SampleLevel(AUDIO_INPUT1_SAMPLER, GLOBAL_TRANS_TC(tc), 0.0f).zzzz);

return;
}


VertexOutput mainVS(VertexInput input)
{
    VertexOutput output;
    main(input);
    output.gl_Position = gl_Position;
    output.tc = tc;

    output.gl_Position.y *= -1.0f;
    return output;
}
    