// Decoding and encoding through the engine, beside OpenSSL's d2i and i2d on the same octets.
#include <openssl/ocsp.h>
#include <openssl/x509.h>

#include "asn1data/engine.h"
#include "asn1data/ocsp.h"
#include "asn1data/x509_certificate.h"
#include "benchmarks.h"
#include "counting.h"
#include "messages.h"

namespace {

using bench::Octets;

template <typename Record, typename Control>
void decodeOurs(benchmark::State& state, const Octets& octets) {
    bench::Counter counter(state);
    for (auto _ : state) {
        ASN1BERDecodeBuffer buffer(octets.data(), static_cast<int>(octets.size()));
        Record record;
        Control control(buffer, record);
        if (control.Decode() != RTS_OK) state.SkipWithError("does not decode");
        benchmark::DoNotOptimize(record);
    }
}

template <typename Record, typename Control>
void encodeOurs(benchmark::State& state, const Octets& octets) {
    ASN1BERDecodeBuffer input(octets.data(), static_cast<int>(octets.size()));
    Record record;
    Control(input, record).Decode();
    bench::Counter counter(state);
    for (auto _ : state) {
        ASN1BEREncodeBuffer output;
        Control control(output, record);
        if (control.Encode() != static_cast<int>(octets.size()))
            state.SkipWithError("does not encode to its length");
        benchmark::DoNotOptimize(output.getMsgPtr());
    }
}

template <auto Decode, auto Free>
void decodeOpenssl(benchmark::State& state, const Octets& octets) {
    bench::Counter counter(state);
    for (auto _ : state) {
        const unsigned char* position = octets.data();
        auto* value = Decode(nullptr, &position, static_cast<long>(octets.size()));
        benchmark::DoNotOptimize(value);
        Free(value);
    }
}

// What d2i_OCSP_RESPONSE leaves as octets is read as well: the engine reads it at once.
void decodeOpensslResponse(benchmark::State& state, const Octets& octets) {
    bench::Counter counter(state);
    for (auto _ : state) {
        const unsigned char* position = octets.data();
        OCSP_RESPONSE* response = d2i_OCSP_RESPONSE(nullptr, &position, static_cast<long>(octets.size()));
        OCSP_BASICRESP* basic = OCSP_response_get1_basic(response);
        benchmark::DoNotOptimize(basic);
        OCSP_BASICRESP_free(basic);
        OCSP_RESPONSE_free(response);
    }
}

void encodeOpensslCertificate(benchmark::State& state, const Octets& octets) {
    const unsigned char* position = octets.data();
    X509* certificate = d2i_X509(nullptr, &position, static_cast<long>(octets.size()));
    bench::Counter counter(state);
    for (auto _ : state) {
        unsigned char* encoded = nullptr;
        // i2d_X509 hands out the octets that it read; this one encodes.
        const int length = i2d_re_X509_tbs(certificate, &encoded);
        benchmark::DoNotOptimize(length);
        OPENSSL_free(encoded);
    }
    X509_free(certificate);
}

void encodeOpensslResponse(benchmark::State& state, const Octets& octets) {
    const unsigned char* position = octets.data();
    OCSP_RESPONSE* response = d2i_OCSP_RESPONSE(nullptr, &position, static_cast<long>(octets.size()));
    OCSP_BASICRESP* basic = OCSP_response_get1_basic(response);
    bench::Counter counter(state);
    for (auto _ : state) {
        unsigned char* encoded = nullptr;
        const int length = i2d_OCSP_BASICRESP(basic, &encoded);
        benchmark::DoNotOptimize(length);
        OPENSSL_free(encoded);
    }
    OCSP_BASICRESP_free(basic);
    OCSP_RESPONSE_free(response);
}

using namespace asn1data;

}  // namespace

void bench::addCodecBenchmarks() {
    const auto add = [](const char* name, auto function, const Octets& octets) {
        benchmark::RegisterBenchmark(
            name, [function, &octets](benchmark::State& state) { function(state, octets); });
    };
    add("certificate decode/ours", decodeOurs<ASN1T_Certificate, ASN1C_Certificate>,
        bench::typicalCertificate());
    add("certificate decode/openssl", decodeOpenssl<d2i_X509, X509_free>, bench::typicalCertificate());
    add("certificate encode/ours", encodeOurs<ASN1T_Certificate, ASN1C_Certificate>,
        bench::typicalCertificate());
    add("certificate encode/openssl", encodeOpensslCertificate, bench::typicalCertificate());
    add("small response decode/ours", decodeOurs<ASN1T_OCSPResponse, ASN1C_OCSPResponse>,
        bench::smallResponse());
    add("small response decode/openssl", decodeOpensslResponse, bench::smallResponse());
    add("small response encode/ours", encodeOurs<ASN1T_OCSPResponse, ASN1C_OCSPResponse>,
        bench::smallResponse());
    add("small response encode/openssl", encodeOpensslResponse, bench::smallResponse());
    add("typical response decode/ours", decodeOurs<ASN1T_OCSPResponse, ASN1C_OCSPResponse>,
        bench::typicalResponse());
    add("typical response decode/openssl", decodeOpensslResponse, bench::typicalResponse());
    static const Octets hundred = bench::responseOf(100);
    add("100 entries decode/ours", decodeOurs<ASN1T_OCSPResponse, ASN1C_OCSPResponse>, hundred);
    add("100 entries decode/openssl", decodeOpensslResponse, hundred);
    static const Octets tenThousand = bench::responseOf(10000);
    add("10000 entries decode/ours", decodeOurs<ASN1T_OCSPResponse, ASN1C_OCSPResponse>, tenThousand);
    add("10000 entries decode/openssl", decodeOpensslResponse, tenThousand);
}
