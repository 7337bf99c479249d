// ASN1Context, the reference-counted form of a working record, its smart pointer, and the two exceptions of
// the runtime's classes. Counts are plain integers: a context and all that shares it stay on one thread at a
// time.
#ifndef MIRVANE_ASN1RT_SHARED_CONTEXT_H
#define MIRVANE_ASN1RT_SHARED_CONTEXT_H

#include <cstdint>
#include <utility>

#include "asn1rt/context.h"

// Carries one status of asn1rt/status.h.
class ASN1RTLException {
  public:
    explicit ASN1RTLException(int status) : mStatus(status) {}
    virtual ~ASN1RTLException() = default;

    int getStatus() const { return mStatus; }

  protected:
    std::int32_t mStatus;
};

class ASN1Context : public ASN1CTXT {
  public:
    // A live context with a count of 0. Throws ASN1MessageBuffer::RTLError if rtInitContext fails.
    ASN1Context();
    ~ASN1Context();

    ASN1Context(const ASN1Context&) = delete;
    ASN1Context& operator=(const ASN1Context&) = delete;

    // Writes the first failure to standard output, see rtErrPrint.
    void PrintErrorInfo() { rtErrPrint(&errInfo); }

    // The last _unref destroys the object, which must therefore come from new. One on the stack is legal as
    // long as no reference to it is taken.
    void _ref() { ++refCount; }
    void _unref();
    int getRefCount() const { return refCount; }

  private:
    std::int32_t refCount = 0;
};

class ASN1CtxtPtr {
  public:
    ASN1CtxtPtr() = default;
    ASN1CtxtPtr(ASN1Context* context) : mPointer(context) {
        if (mPointer) mPointer->_ref();
    }
    ASN1CtxtPtr(const ASN1CtxtPtr& other) : ASN1CtxtPtr(other.mPointer) {}
    ASN1CtxtPtr(ASN1CtxtPtr&& other) noexcept : mPointer(std::exchange(other.mPointer, nullptr)) {}
    ~ASN1CtxtPtr() {
        if (mPointer) mPointer->_unref();
    }

    // Takes the new reference before it drops the old one.
    ASN1CtxtPtr& operator=(ASN1CtxtPtr other) noexcept {
        std::swap(mPointer, other.mPointer);
        return *this;
    }

    ASN1Context* operator->() const { return mPointer; }
    ASN1Context& operator*() const { return *mPointer; }
    operator ASN1Context*() const { return mPointer; }

  private:
    ASN1Context* mPointer = nullptr;
};

// Base of the value records of top-level types: keeps the context alive that holds what the record points at.
// Null when the record owns nothing.
struct ASN1TPDU {
    ASN1CtxtPtr mpContext;
};

#endif
