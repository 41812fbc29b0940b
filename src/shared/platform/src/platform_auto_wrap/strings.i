/* Strings: Java strings travel as UTF-16 units through HI18N (zr_jni::fromJava
   and zr_jni::toJava), in place of SWIG's stock std::string typemaps. A null
   Java string raises NullPointerException and the wrapped call is not made. */

%define ZR_JNI_STRING(TYPE, NULLTEXT)
%typemap(jni) TYPE, const TYPE & "jstring"
%typemap(jtype) TYPE, const TYPE & "String"
%typemap(jstype) TYPE, const TYPE & "String"
%typemap(javain) TYPE, const TYPE & "$javainput"
%typemap(javaout) TYPE, const TYPE & {
    return $jnicall;
  }
%typemap(typecheck) TYPE, const TYPE & = char *;

%typemap(in) TYPE %{
  if (!$input) {
    SWIG_JavaThrowException(jenv, SWIG_JavaNullPointerException, NULLTEXT);
    return $null;
  }
  if (!zr_jni::fromJava(jenv, $input, $1)) return $null;
%}
%typemap(in) const TYPE & ($*1_ltype temp) %{
  if (!$input) {
    SWIG_JavaThrowException(jenv, SWIG_JavaNullPointerException, NULLTEXT);
    return $null;
  }
  if (!zr_jni::fromJava(jenv, $input, temp)) return $null;
  $1 = &temp;
%}
%typemap(out) TYPE %{ $result = zr_jni::toJava(jenv, $1); %}
%typemap(out) const TYPE & %{ $result = zr_jni::toJava(jenv, *$1); %}
%enddef

ZR_JNI_STRING(std::string, "null std::string")
ZR_JNI_STRING(HSTString, "null HSTString")
