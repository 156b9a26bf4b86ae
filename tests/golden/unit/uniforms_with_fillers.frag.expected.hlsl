@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

cbuffer MyConstantBuffer : register(b0)
{
int PREFIX_mode;
float PREFIX_amount;
float PLACEHOLDER_VALUE_0;
float PLACEHOLDER_VALUE_1;
float2 iResolution;
float PLACEHOLDER_VALUE_2;
float PLACEHOLDER_VALUE_3;
float2 iResolutionOrig;
float PLACEHOLDER_VALUE_4;
float PLACEHOLDER_VALUE_5;
float3 PREFIX_tint;
float PLACEHOLDER_VALUE_6;
float3x3 PREFIX_m;
float PREFIX_w[4];

};

float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
float3 c = ((mul( PREFIX_tint,  PREFIX_m)) *  PREFIX_amount);
return float4(( c * 1), ( PREFIX_w[1] +  PREFIX_mode));
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    