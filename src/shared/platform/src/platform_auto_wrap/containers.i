/* Vectors and iterators: one small class per element type with exactly these
   operations, declared here instead of SWIG's stock vector wrapper. size and
   clear act on the vector itself; on a vector of pointers clear drops the
   pointers and leaves the objects to their owners in the model. createIter and
   the model's create...Iter operations hand out a new iterator that the Java
   proxy owns and frees with delete(). */

namespace std {
template <class T>
class vector {
 public:
  vector();
  ~vector();
  size_t size() const;
  void clear();
  void push_back(const T& value);
  %extend {
    %newobject createIter;
    HSTFwdIter<T>* createIter() const { return HSTCreateFwdIter(*$self); }
  }
};
}  // namespace std

%nodefaultctor HSTFwdIter;
template <class T>
class HSTFwdIter {
 public:
  virtual ~HSTFwdIter();
  virtual bool hasNext() const;
  %extend {
    /* The current element, then the next position. Past the end there is no
       element: that raises an error instead of reading beyond the vector. */
    T next() {
      if (!$self->hasNext()) throw std::out_of_range("iterator has no next element");
      return $self->next();
    }
  }
};

%define ZR_JNI_CONTAINER(VECTOR, ITER, ELEM)
%template(VECTOR) std::vector<ELEM>;
%template(ITER) HSTFwdIter<ELEM>;
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
