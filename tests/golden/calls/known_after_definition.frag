float before() { return helper(1.0); }
float helper(float a) { return helper(a) + max(a, 1.0); }
float after() { return helper(1.0); }
float max(float a, float b) { return a; }
float later() { return max(1.0, 2.0) + declared(1.0); }
float declared(float);
float last() { return declared(1.0); }
