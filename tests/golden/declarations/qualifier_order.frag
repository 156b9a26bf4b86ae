highp varying float lost;
varying highp float kept;
flat varying int gone;
varying flat int there;
invariant float dropped;
layout(location = 1 + 2, shared) varying float placed;
