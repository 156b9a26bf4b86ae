void f(vec4 a) {
    mat2 env__________isDidMatArraySubScriptObject;
    p(lessThan(a.x, env__________isDidMatArraySubScriptObject * a.xy),
      env__________isDidMatArraySubScriptObject[0]);
}
