// Revocation lists (RFC 5280, 5) as a source of status.
#include <openssl/err.h>
#include <openssl/x509v3.h>

#include <memory>

#include "message.h"
#include "status_source.h"
#include "time_text.h"

namespace tools {
namespace {

using Mirvane::CDateTime;
using Mirvane::ASN1::CBigInteger;
using Mirvane::ASN1::CrlReason;
using namespace Mirvane::PKI::OCSP;

struct ListFree {
    void operator()(X509_CRL* list) const { X509_CRL_free(list); }
};
using List = std::unique_ptr<X509_CRL, ListFree>;

struct EnumeratedFree {
    void operator()(ASN1_ENUMERATED* value) const { ASN1_ENUMERATED_free(value); }
};

List readList(std::string const& path) {
    const Octets octets = readInput(path);
    unsigned char const* position = octets.data();
    List list(d2i_X509_CRL(nullptr, &position, static_cast<long>(octets.size())));
    ERR_clear_error();
    if (!list) throw InputError(sourceName(path), "is no revocation list");
    return list;
}

void demandIssuer(X509_CRL* list, Certificate const& issuer, std::string const& source) {
    EVP_PKEY* const key = X509_get0_pubkey(issuer.get());
    const bool isNamed = X509_NAME_cmp(X509_CRL_get_issuer(list), X509_get_subject_name(issuer.get())) == 0;
    const bool isSigned = isNamed && key && X509_CRL_verify(list, key) == 1;
    ERR_clear_error();
    if (!isNamed) throw InputError(source, "is a revocation list of another issuer than " + issuer.source());
    if (!isSigned) throw InputError(source, "the signature is not one by the key of " + issuer.source());
}

// A list that is not whole would make what it leaves out good.
void demandWhole(X509_CRL* list, std::string const& source) {
    if (X509_CRL_get_ext_by_NID(list, NID_delta_crl, -1) >= 0) {
        throw InputError(source, "is a delta of a revocation list");
    }
    if (X509_CRL_get_ext_by_NID(list, NID_issuing_distribution_point, -1) >= 0) {
        throw InputError(source, "is a revocation list for some certificates or reasons only");
    }
}

CBigInteger serialOf(X509_REVOKED const* entry) {
    unsigned char* encoded = nullptr;
    const int length = i2d_ASN1_INTEGER(X509_REVOKED_get0_serialNumber(entry), &encoded);
    const Mirvane::CBlob octets(encoded, length > 0 ? static_cast<unsigned long>(length) : 0);
    OPENSSL_free(encoded);
    CBigInteger serial;
    serial.decode(octets);
    return serial;
}

CCertStatus statusOf(X509_REVOKED* entry, std::string const& source) {
    const auto time = toDateTime(X509_REVOKED_get0_revocationDate(entry));
    if (!time) throw InputError(source, "has an entry with a time that is none");
    const std::unique_ptr<ASN1_ENUMERATED, EnumeratedFree> value(
        static_cast<ASN1_ENUMERATED*>(X509_REVOKED_get_ext_d2i(entry, NID_crl_reason, nullptr, nullptr)));
    if (!value) return CCertStatus(*time, nullptr);
    const auto reason = static_cast<CrlReason>(ASN1_ENUMERATED_get(value.get()));
    return reason == Mirvane::ASN1::removeFromCRL ? goodStatus() : CCertStatus(*time, &reason);
}

}  // namespace

StatusSource readRevocationList(std::string const& path, Certificate const& issuer, CDateTime const& now) {
    const std::string name = sourceName(path);
    const List list = readList(path);
    demandIssuer(list.get(), issuer, name);
    demandWhole(list.get(), name);
    StatusSource source;
    source.unlisted = goodStatus();
    source.thisUpdate = toDateTime(X509_CRL_get0_lastUpdate(list.get()));
    source.nextUpdate = toDateTime(X509_CRL_get0_nextUpdate(list.get()));
    if (!source.thisUpdate) throw InputError(name, "has a thisUpdate that is no time");
    if (source.nextUpdate && *source.nextUpdate < now) {
        throw InputError(name, "is out of date since " + timeText(*source.nextUpdate));
    }
    STACK_OF(X509_REVOKED)* const entries = X509_CRL_get_REVOKED(list.get());
    for (int i = 0; i < sk_X509_REVOKED_num(entries); ++i) {
        X509_REVOKED* const entry = sk_X509_REVOKED_value(entries, i);
        source.listed.insert_or_assign(serialText(serialOf(entry)), statusOf(entry, name));
    }
    return source;
}

}  // namespace tools
