/* Every call into the library runs in one guarded region; the handler is
   zr_jni::rethrowToJava, so that it can be tested without a JVM. After it has
   raised the Java exception the wrapper returns the zero of its result. */
%exception %{
  try {
    $action
  } catch (...) {
    zr_jni::rethrowToJava(jenv);
    return $null;
  }
%}

/* A proxy used after its delete() passes a null handle as `this`. */
%typemap(check) SWIGTYPE *self %{
  if (!$1) {
    SWIG_JavaThrowException(jenv, SWIG_JavaNullPointerException, "$1_basetype object is deleted or null");
    return $null;
  }
%}

/* A null handle for a reference argument names the declared type. */
%typemap(in) SWIGTYPE & %{
  $1 = *($&1_ltype)&$input;
  if (!$1) {
    SWIG_JavaThrowException(jenv, SWIG_JavaNullPointerException, "$1_type reference is null");
    return $null;
  }
%}

/* A result returned by value is copied to the heap for its proxy; a failure
   of that copy is raised like any other. */
%typemap(out) SWIGTYPE %{
  try {
    *($&1_ltype*)&$result = new $1_ltype($1);
  } catch (...) {
    zr_jni::rethrowToJava(jenv);
    return $null;
  }
%}
