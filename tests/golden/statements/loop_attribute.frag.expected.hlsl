@prelude@

struct VertexOutput
{
    float4 gl_Position : SV_Position;
    float2 tc : TEXCOORD0;

};

cbuffer MyConstantBuffer : register(b0)
{
float2 iResolution;
float4x4 m;

};

float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {
float4 v = float4( tc, 0.0f, 1.0f);
for(int i = 0; ( i < 2); ++ i) {

[loop]
for(int a = 0; ( a < 2); ++ a) v += 0.1000000014901161f;
 v +=  m[ i];
for(int b = 0; ( b < 2); ++ b) v += 0.2000000029802322f;
}

[loop]
for(int c = 0; ( c < 2); ++ c) v += 0.300000011920929f;
return  v;
return float4(gloabal_float4_Constructor(0.0f));
}


float4 mainPS(VertexOutput input) : SV_TARGET
{
    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;
    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);
    _tc.y = 1.0 - _tc.y;
    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;
}
    