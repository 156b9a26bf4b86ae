static float4 gl_Position;
static float2 tc;
@prelude@

struct VertexInput
{

};

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};



VertexOutput mainVS(VertexInput input)
{
    VertexOutput output;
    main(input);
    output.gl_Position = gl_Position;
    output.tc = tc;

    output.gl_Position.y *= -1.0f;
    return output;
}
    