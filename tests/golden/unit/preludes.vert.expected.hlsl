static float4 gl_Position;
static float2 tc;
static float3 shade;
@prelude@

struct VertexInput
{
    float4 position : position;
    float4 texcoord : texcoord;

};

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;
    float3 shade : __shade;

};

cbuffer MyConstantBuffer : register(b0)
{
float2 iResolution;

};

float2 TransTc(float2 tc, VertexInput input) {
return float2( tc.x, (1.0f -  tc.y));
return float2(gloabal_float2_Constructor(0.0f));
}
float2 MovTc(float2 tc, VertexInput input) {
return  tc;
return float2(gloabal_float2_Constructor(0.0f));
}
float4 TransV(float4 v, VertexInput input) {
 v.y *= -1.0f;
return  v;
return float4(gloabal_float4_Constructor(0.0f));
}

void main(VertexInput input)
{
shade = float3(input.texcoord.xy, 1.0f);
tc = TransTc(input.texcoord.xy, input);
gl_Position = TransV(input.position, input);

return;
}


VertexOutput mainVS(VertexInput input)
{
    VertexOutput output;
    main(input);
    output.gl_Position = gl_Position;
    output.tc = tc;
    output.shade = shade;

    output.gl_Position.y *= -1.0f;
    return output;
}
    