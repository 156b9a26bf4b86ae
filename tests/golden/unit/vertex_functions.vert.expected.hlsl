static float4 gl_Position;
static float2 tc;
#define SCALE (2.0f)
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
float4x4 mvp;

};

static float offset = 0.5f;
float4 place(float4 p, VertexInput input) {
return (mul(float4((( p.xy *  SCALE) -  offset),  p.zw),  mvp));
return float4(gloabal_float4_Constructor(0.0f));
}

void main(VertexInput input)
{
float4 p = place(input.position, input);
if((global_is_equal_vec4( p, input.position)))return;
gl_Position =  p;

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
    