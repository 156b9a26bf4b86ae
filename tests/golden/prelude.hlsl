
float2 GLOBAL_TRANS_TC(float2 tc){
    return float2(tc.x, 1.0 - tc.y);
}

bool global_is_equal_vec2(float2 v0, float2 v1) {
    if(v0.x == v1.x && v0.y == v1.y)
        return true;
    return false;
}

bool global_is_equal_vec3(float3 v0, float3 v1) {
    if(v0.x == v1.x && v0.y == v1.y && v0.z == v1.z)
        return true;
    return false;
}

bool global_is_equal_vec4(float4 v0, float4 v1) {
    if(v0.x == v1.x && v0.y == v1.y && v0.z == v1.z && v0.w == v1.w)
        return true;
    return false;
}

bool global_is_not_equal_vec2(float2 v0, float2 v1) {
    if(v0.x != v1.x || v0.y != v1.y)
        return true;
    return false;
}

bool global_is_not_equal_vec3(float3 v0, float3 v1) {
    if(v0.x != v1.x || v0.y != v1.y || v0.z != v1.z)
        return true;
    return false;
}

bool global_is_not_equal_vec4(float4 v0, float4 v1) {
    if(v0.x != v1.x || v0.y != v1.y || v0.z != v1.z || v0.w != v1.w)
        return true;
    return false;
}

float2 gloabal_float2_Constructor(float value){
    return float2(value, value);
}
float3 gloabal_float3_Constructor(float value){
    return float3(value, value, value);
}
float4 gloabal_float4_Constructor(float value){
    return float4(value, value, value, value);
}
int2 gloabal_int2_Constructor(int value){
    return int2(value, value);
}
int3 gloabal_int3_Constructor(int value){
    return int3(value, value, value);
}
int4 gloabal_int4_Constructor(int value){
    return int4(value, value, value, value);
}
float2x2 gloabal_float2x2_Constructor(float value){
    return float2x2(value, 0.0f, value, 0.0f);
}
float3x3 gloabal_float3x3_Constructor(float value){
    return float3x3(value, 0.0f, 0.0f, 0.0f, value, 0.0f, 0.0f, 0.0f, value);
}
float4x4 gloabal_float4x4_Constructor(float value){
    return float4x4(value, 0.0f, 0.0f, 0.0f, 0.0f, value, 0.0f, 0.0f, 0.0f, 0.0f, value, 0.0f, 0.0f, 0.0f, 0.0f, value);
}
float gloabal_lessThan(float a, float b){
    return a < b ? 1.0 : 0.0;
}
float2 gloabal_lessThan2(float2 a, float2 b){
    return float2((a.x < b.x ? 1.0 : 0.0), (a.y < b.y ? 1.0 : 0.0));
}
float3 gloabal_lessThan3(float3 a, float3 b){
    return float3((a.x < b.x ? 1.0 : 0.0), (a.y < b.y ? 1.0 : 0.0), (a.z < b.z ? 1.0 : 0.0));
}
float4 gloabal_lessThan4(float4 a, float4 b){
    return float4((a.x < b.x ? 1.0 : 0.0), (a.y < b.y ? 1.0 : 0.0), (a.z < b.z ? 1.0 : 0.0), (a.w < b.w ? 1.0 : 0.0));
}
float gloabal_greaterThan(float a, float b){
    return a > b ? 1.0 : 0.0;
}
float2 gloabal_greaterThan2(float2 a, float2 b){
    return float2((a.x > b.x ? 1.0 : 0.0), (a.y > b.y ? 1.0 : 0.0));
}
float3 gloabal_greaterThan3(float3 a, float3 b){
    return float3((a.x > b.x ? 1.0 : 0.0), (a.y > b.y ? 1.0 : 0.0), (a.z > b.z ? 1.0 : 0.0));
}
float4 gloabal_greaterThan4(float4 a, float4 b){
    return float4((a.x > b.x ? 1.0 : 0.0), (a.y > b.y ? 1.0 : 0.0), (a.z > b.z ? 1.0 : 0.0), (a.w > b.w ? 1.0 : 0.0));
}
float4 global_depth_input_level(Texture2D tex, SamplerState sa, float2 tc){
    float4 depthTex = tex.SampleLevel(sa, tc, 0.0f);
    float depthValue = (depthTex.r + 1.0f) / 2.0f;
    return float4(depthValue, depthValue, depthValue, depthValue);
}
float4 global_depth_input(Texture2D tex, SamplerState sa, float2 tc){
    // N card is ok, i card is not ok!
    float4 depthTex = tex.Sample(sa, tc);
    float depthValue = (depthTex.r + 1.0f) / 2.0f;
    return float4(depthValue, depthValue, depthValue, depthValue);
    // A card is ok!
    /*
    float depth = 0.0f;
    for (uint i = 0; i < 4; ++i)  // 4 is the number of samples
    {
        depth += tex.Load(uint3(uint(tc.x * 1920.0f), uint(tc.y * 1080.0f), i));
    }
    depth /= 4.0f;  // 4 is the number of samples
    depth = (depth + 1.0f) / 2.0f;
    return float4(depth, depth, depth, depth);
    */
}
