// ctxt_handle, a working context on the stack for a step that needs one and has no message.
#ifndef MIRVANE_ASN1_CONTEXT_HANDLE_H
#define MIRVANE_ASN1_CONTEXT_HANDLE_H

#include "asn1rt/context.h"

namespace Mirvane::ASN1 {

class ctxt_handle {
  public:
    // A dead context: init() makes it live.
    ctxt_handle() = default;
    ctxt_handle(ctxt_handle const&) = delete;
    ctxt_handle& operator=(ctxt_handle const&) = delete;
    ~ctxt_handle() { release(); }

    // True on success. Call it once, or again after release().
    bool init() { return rtInitContext(&ctxt_, nullptr) == RTS_OK; }
    // Frees the context with all its memory; a dead one is passed by.
    void release() { rtFreeContext(&ctxt_); }

    ASN1CTXT* get() { return &ctxt_; }

  private:
    ASN1CTXT ctxt_{};
};

}  // namespace Mirvane::ASN1

#endif
