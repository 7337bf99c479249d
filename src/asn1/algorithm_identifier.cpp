#include "asn1/algorithm_identifier.h"

#include <cstring>
#include <utility>

#include "asn1/algorithm_identifier_traits.h"
#include "asn1/bridge.h"
#include "asn1/context_memory.h"
#include "asn1/object_identifier_text.h"
#include "asn1/primitive_traits.h"
#include "platform/last_error.h"

namespace Mirvane::ASN1 {

CAlgorithmIdentifier::CAlgorithmIdentifier() = default;
CAlgorithmIdentifier::CAlgorithmIdentifier(char const* oid) : algorithm_(oid) {}
CAlgorithmIdentifier::CAlgorithmIdentifier(CAlgorithmIdentifier const& other) = default;
CAlgorithmIdentifier::~CAlgorithmIdentifier() = default;

CAlgorithmIdentifier& CAlgorithmIdentifier::operator=(CAlgorithmIdentifier const& other) {
    if (this != &other) CAlgorithmIdentifier::assign(other);
    return *this;
}

void CAlgorithmIdentifier::assign(CAlgorithmIdentifier const& other) {
    CAlgorithmIdentifier copied(other);
    CAlgorithmIdentifier::swap(copied);
}

void CAlgorithmIdentifier::swap(CAlgorithmIdentifier& other) {
    CStringProxy text(algorithm_);  // no later step fails
    algorithm_ = std::move(other.algorithm_);
    other.algorithm_ = std::move(text);
    parameters_.swap(other.parameters_);
}

void CAlgorithmIdentifier::put_algorithm(char const* oid) {
    algorithm_ = oid;
}

bool CAlgorithmIdentifier::operator==(CAlgorithmIdentifier const& other) const {
    return std::strcmp(get_algorithm(), other.get_algorithm()) == 0 && parameters_ == other.parameters_;
}

CBlob CAlgorithmIdentifier::encode() const {
    return asn1Encode<ASN1T_AlgorithmIdentifier_traits>(*this);
}

void CAlgorithmIdentifier::decode(CBlob const& encoded) {
    asn1Decode<ASN1T_AlgorithmIdentifier_traits>(encoded, *this);
}

CAlgorithmIdentifierEx::CAlgorithmIdentifierEx(CAlgorithmIdentifierEx const& other)
    : CAlgorithmIdentifier(other), algId_(other.algId_.load(std::memory_order_relaxed)) {}

CAlgorithmIdentifierEx::~CAlgorithmIdentifierEx() = default;

CAlgorithmIdentifierEx& CAlgorithmIdentifierEx::operator=(CAlgorithmIdentifierEx const& other) {
    assign(other);
    return *this;
}

CAlgorithmIdentifierEx& CAlgorithmIdentifierEx::operator=(CAlgorithmIdentifier const& other) {
    assign(other);
    return *this;
}

void CAlgorithmIdentifierEx::assign(CAlgorithmIdentifierEx const& other) {
    CAlgorithmIdentifier::assign(other);
    algId_.store(other.algId_.load(std::memory_order_relaxed), std::memory_order_relaxed);
}

void CAlgorithmIdentifierEx::assign(CAlgorithmIdentifier const& other) {
    const bool same = hasText(other.get_algorithm());
    CAlgorithmIdentifier::assign(other);
    if (!same) algId_.store(0, std::memory_order_relaxed);
}

void CAlgorithmIdentifierEx::swap(CAlgorithmIdentifierEx& other) {
    CAlgorithmIdentifier::swap(other);
    algId_.store(other.algId_.exchange(algId_.load(std::memory_order_relaxed), std::memory_order_relaxed),
                 std::memory_order_relaxed);
}

void CAlgorithmIdentifierEx::swap(CAlgorithmIdentifier& other) {
    const bool same = hasText(other.get_algorithm());
    CAlgorithmIdentifier::swap(other);
    if (!same) algId_.store(0, std::memory_order_relaxed);
}

void CAlgorithmIdentifierEx::put_algorithm(char const* oid) {
    if (hasText(oid)) return;
    algId_.store(0, std::memory_order_relaxed);
    CAlgorithmIdentifier::put_algorithm(oid);
}

ALG_ID CAlgorithmIdentifierEx::get_algId() const {
    ALG_ID number = algId_.load(std::memory_order_relaxed);
    if (number != 0) return number;
    number = CertOIDToAlgId(get_algorithm());
    // Meant not to throw: the caller goes on with 0, and the platform refuses that where it is used.
    if (number == 0) SetLastError(static_cast<DWORD>(failure::badAlgorithm));
    algId_.store(number, std::memory_order_relaxed);
    return number;
}

bool CAlgorithmIdentifierEx::hasText(char const* oid) const {
    return std::strcmp(get_algorithm(), oid != nullptr ? oid : "") == 0;
}

namespace {

// Fills an empty record.
void fill(ASN1CTXT* ctxt, asn1data::ASN1T_AlgorithmIdentifier& record, char const* oid,
          CBlob const* parameters) {
    // Meant to be another code than that of ASN1TObjId_traits.
    if (str2oid(oid, &record.algorithm) != 0) failure::raise(failure::asn1);
    if (parameters == nullptr || parameters->cbData() == 0) return;
    record.m.parametersPresent = 1;
    ASN1TOpenType_traits::set(ctxt, record.parameters, *parameters);
    if (asn1data::asn1DTC_AlgorithmIdentifier(ctxt, &record) != 0) failure::raise(failure::asn1);
}

}  // namespace

asn1data::ASN1T_AlgorithmIdentifier* ASN1T_AlgorithmIdentifier_set(ASN1CTXT* ctxt, char const* oid,
                                                                   CBlob const* parameters) {
    auto* const result = newRecord<asn1data::ASN1T_AlgorithmIdentifier>(ctxt);
    fill(ctxt, *result, oid, parameters);
    return result;
}

void ASN1T_AlgorithmIdentifier_get(CAlgorithmIdentifier& value,
                                   asn1data::ASN1T_AlgorithmIdentifier const& rec) {
    CBlob parameters;
    if (rec.m.parametersPresent) ASN1TOpenType_traits::get(rec.parameters, parameters);
    value.put_algorithm(ObjectIdentifierText(rec.algorithm).c_str());
    value.put_parameters(std::move(parameters));
}

void ASN1T_AlgorithmIdentifier_traits::set(ASN1CTXT* ctxt, ASN1_T& rec, CAlgorithmIdentifier const& value) {
    fill(ctxt, rec, value.get_algorithm(), &value.get_parameters());
}

void ASN1T_AlgorithmIdentifier_traits::get(ASN1_T const& rec, CAlgorithmIdentifier& value) {
    ASN1T_AlgorithmIdentifier_get(value, rec);
}

}  // namespace Mirvane::ASN1
