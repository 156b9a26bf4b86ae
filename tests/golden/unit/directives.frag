#version 330
#extension GLX : require
#define TWICE(x) ((x) * 2.0)
float f() { return TWICE(1.5); }
