static float4 gl_Position;
static float2 tc;
static float3 normal;
static float AVOID_KEYWORD_CONFLICTS_line;
static float2 pairs[2];
@prelude@

struct VertexInput
{
    float4 position : position;
    float2 uv1_ : uv1_;

};

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;
    float3 normal : __normal;
    float AVOID_KEYWORD_CONFLICTS_line : __AVOID_KEYWORD_CONFLICTS_line;
    float2 pairs[2] : __pairs;

};

cbuffer MyConstantBuffer : register(b0)
{
float2 iResolution;

};


void main(VertexInput input)
{
gl_Position = float4(((input.position.xy * 2.0f) - 1.0f), 0.0f, 1.0f);
tc = input.uv1_;
normal = float3(input.position.xy, 1.0f);
AVOID_KEYWORD_CONFLICTS_line = normal.x;
pairs[0] = tc;
pairs[1] = tc.yx;

return;
}


VertexOutput mainVS(VertexInput input)
{
    VertexOutput output;
    main(input);
    output.gl_Position = gl_Position;
    output.tc = tc;
    output.normal = normal;
    output.AVOID_KEYWORD_CONFLICTS_line = AVOID_KEYWORD_CONFLICTS_line;
    output.pairs = pairs;

    output.gl_Position.y *= -1.0f;
    return output;
}
    