/* Vectors and iterators: one small class per element type with exactly these
   operations, declared here instead of SWIG's stock vector wrapper. size and
   clear act on the vector itself; on a vector of pointers clear drops the
   pointers and leaves the objects to their owners in the model. createIter and
   the model's create...Iter operations hand out a new iterator that the Java
   proxy owns and frees with delete().

   Each class is a plain class to SWIG, a typedef of the standard vector or the
   library's iterator in C++; typemaps make every signature that names the
   vector or iterator type, under any typedef, use its proxy. */

%define ZR_JNI_PROXY_TYPE(CTYPE, PROXY)
%typemap(jni) CTYPE, CTYPE &, const CTYPE &, CTYPE * "jlong"
%typemap(jtype) CTYPE, CTYPE &, const CTYPE &, CTYPE * "long"
%typemap(jstype) CTYPE, CTYPE &, const CTYPE &, CTYPE * "PROXY"
%typemap(javain) CTYPE, CTYPE &, const CTYPE &, CTYPE * "PROXY.getCPtr($javainput)"
%typemap(javaout) CTYPE {
    return new PROXY($jnicall, true);
  }
%typemap(javaout) CTYPE &, const CTYPE & {
    return new PROXY($jnicall, $owner);
  }
%typemap(javaout) CTYPE * {
    long cPtr = $jnicall;
    return (cPtr == 0) ? null : new PROXY(cPtr, $owner);
  }
%typemap(in) CTYPE & = SWIGTYPE &;
%typemap(in) const CTYPE & = SWIGTYPE &;
%typemap(in) CTYPE * = SWIGTYPE *;
%typemap(out) CTYPE & = SWIGTYPE &;
%typemap(out) const CTYPE & = SWIGTYPE &;
%typemap(out) CTYPE * = SWIGTYPE *;
%typemap(out) CTYPE = SWIGTYPE;
%enddef

%define ZR_JNI_CONTAINER(VECTOR, ITER, ELEM)
%{
typedef std::vector<ELEM> VECTOR;
typedef HSTFwdIter<ELEM> ITER;
%}
class VECTOR {
 public:
  VECTOR();
  ~VECTOR();
  size_t size() const;
  void clear();
  void push_back(ELEM const& value);
  %extend {
    %newobject createIter;
    ITER* createIter() const { return HSTCreateFwdIter(*$self); }
  }
};

%nodefaultctor ITER;
class ITER {
 public:
  virtual ~ITER();
  virtual bool hasNext() const;
  %extend {
    /* The current element, then the next position. Past the end there is no
       element: that raises an error instead of reading beyond the vector. */
    ELEM next() {
      if (!$self->hasNext()) throw std::out_of_range("iterator has no next element");
      return $self->next();
    }
  }
};
ZR_JNI_PROXY_TYPE(std::vector<ELEM>, VECTOR)
ZR_JNI_PROXY_TYPE(HSTFwdIter<ELEM>, ITER)
%enddef

ZR_JNI_CONTAINER(StringVector, StringIter, std::string)
ZR_JNI_CONTAINER(TEQPlatformVector, TEQPlatformIter, HTEQPlatform*)
ZR_JNI_CONTAINER(TEQHardwarePlatformVector, TEQHardwarePlatformIter, HTEQHardwarePlatform*)
ZR_JNI_CONTAINER(TEQSoftwarePlatformVector, TEQSoftwarePlatformIter, HTEQSoftwarePlatform*)
ZR_JNI_CONTAINER(TEQSystemConfigVec, TEQSystemConfigIter, HTEQSystemConfig*)
ZR_JNI_CONTAINER(TEQSystemClockVec, TEQSystemClockIter, HTEQSystemClock*)
ZR_JNI_CONTAINER(TEQProcessorGroupVec, TEQProcessorGroupIter, HTEQProcessorGroup*)
ZR_JNI_CONTAINER(TEQBootImgVec, TEQBootImgIter, HTEQBootImg*)
ZR_JNI_CONTAINER(TEQReconfigurablePartitionVec, TEQReconfigurablePartitionIter, HTEQReconfigurablePartition*)
