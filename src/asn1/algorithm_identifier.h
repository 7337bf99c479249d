// CAlgorithmIdentifier, the AlgorithmIdentifier of X.509 as a value: an object identifier as dotted text, and
// the parameters as they are encoded. CAlgorithmIdentifierEx adds the number that the platform has for the
// algorithm.
//
//   CAlgorithmIdentifier sha1("1.3.14.3.2.26");
//   sha1.put_parameters(CBlob(null, 2));  // 05 00; without this line there would be no parameters
//   CBlob const encoded = sha1.encode();
//
// Distinct objects may be used from distinct threads; one object belongs to one thread while it is changed.
// Failures are ATL::CAtlException.
#ifndef MIRVANE_ASN1_ALGORITHM_IDENTIFIER_H
#define MIRVANE_ASN1_ALGORITHM_IDENTIFIER_H

#include <atomic>
#include <utility>

#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"
#include "platform/algorithms.h"

namespace Mirvane::ASN1 {

class MIRVANE_API CAlgorithmIdentifier {
  public:
    // The empty text, and no parameters.
    CAlgorithmIdentifier();
    // The text as it is, and no parameters. A text that is no object identifier is found out by encode().
    // Null gives the empty text.
    CAlgorithmIdentifier(char const* oid);
    CAlgorithmIdentifier(CAlgorithmIdentifier const& other);
    virtual ~CAlgorithmIdentifier();

    // A failure leaves the object as it was.
    CAlgorithmIdentifier& operator=(CAlgorithmIdentifier const& other);
    // Takes both fields, not by way of put_algorithm.
    void assign(CAlgorithmIdentifier const& other);
    // Exchanges both fields, not by way of put_algorithm. On a failure (memory) nothing has changed.
    void swap(CAlgorithmIdentifier& other);

    // The dotted text, never null; valid until the object changes or dies.
    char const* get_algorithm() const { return algorithm_.c_str(); }
    // One whole element, header included; empty where the parameters are absent.
    CBlob const& get_parameters() const { return parameters_; }

    // Null gives the empty text. Nothing is checked.
    virtual void put_algorithm(char const* oid);
    void put_parameters(CBlob const& parameters) { parameters_ = parameters; }
    void put_parameters(CBlob&& parameters) noexcept { parameters_ = std::move(parameters); }

    // The same text and the same bytes of parameters: absent parameters and a NULL differ.
    bool operator==(CAlgorithmIdentifier const& other) const;
    bool operator!=(CAlgorithmIdentifier const& other) const { return !(*this == other); }

    // The DER form. Throws 0x80093101 for a text that is no object identifier, and for parameters that are
    // not what a known algorithm has.
    CBlob encode() const;
    // Reads the value at the start of the blob. Throws 0x80093101 for what is none; the object is then as it
    // was. The text is taken by put_algorithm.
    void decode(CBlob const& encoded);

  private:
    CStringProxy algorithm_;
    CBlob parameters_;
};

// An algorithm with the platform's number for it, which is looked up once and kept until the identifier
// changes. A change through a reference to CAlgorithmIdentifier by assign, swap or operator= is not seen:
// the number is then that of the former identifier.
class MIRVANE_API CAlgorithmIdentifierEx : public CAlgorithmIdentifier {
  public:
    CAlgorithmIdentifierEx() = default;
    CAlgorithmIdentifierEx(CAlgorithmIdentifier const& other) : CAlgorithmIdentifier(other) {}
    // The number is copied too.
    CAlgorithmIdentifierEx(CAlgorithmIdentifierEx const& other);
    ~CAlgorithmIdentifierEx() override;

    // From another CAlgorithmIdentifierEx the number is taken over; else it is kept if the text stays the
    // same.
    CAlgorithmIdentifierEx& operator=(CAlgorithmIdentifierEx const& other);
    CAlgorithmIdentifierEx& operator=(CAlgorithmIdentifier const& other);
    void assign(CAlgorithmIdentifierEx const& other);
    void assign(CAlgorithmIdentifier const& other);
    void swap(CAlgorithmIdentifierEx& other);
    void swap(CAlgorithmIdentifier& other);

    // Nothing happens if the text is the present one; else the number is forgotten.
    void put_algorithm(char const* oid) override;

    // The platform's number. An unknown identifier gives 0 and leaves 0x80090008 in the last-error slot;
    // nothing is thrown. Threads that share an object may each do the look-up.
    ALG_ID get_algId() const;

  private:
    bool hasText(char const* oid) const;

    mutable std::atomic<ALG_ID> algId_ = 0;  // 0: not looked up yet
};

}  // namespace Mirvane::ASN1

#endif
