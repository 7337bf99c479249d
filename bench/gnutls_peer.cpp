#include <gnutls/ocsp.h>

#include <memory>

#include "messages.h"
#include "peers.h"

namespace bench {
namespace {

void readGnutls(const Octets& octets) {
    gnutls_ocsp_resp_t made = nullptr;
    require(gnutls_ocsp_resp_init(&made) == GNUTLS_E_SUCCESS);
    const std::unique_ptr<gnutls_ocsp_resp_int, Release<gnutls_ocsp_resp_deinit>> response(made);
    const gnutls_datum_t data = {const_cast<unsigned char*>(octets.data()),
                                 static_cast<unsigned>(octets.size())};
    require(gnutls_ocsp_resp_import(made, &data) == GNUTLS_E_SUCCESS);
    unsigned status = 0;
    std::time_t thisUpdate = 0;
    std::time_t nextUpdate = 0;
    require(gnutls_ocsp_resp_get_single(made, 0, nullptr, nullptr, nullptr, nullptr, &status, &thisUpdate,
                                        &nextUpdate, nullptr, nullptr) == GNUTLS_E_SUCCESS);
    require(status == GNUTLS_OCSP_CERT_GOOD && thisUpdate < nextUpdate);
}

}  // namespace

void addGnutls(Works& works) {
    addPeer(works, {"gnutls", readGnutls});
}

}  // namespace bench
