// mirvane-ocsp: ask, answer, check and look into messages of the Online Certificate Status Protocol.
#include "common/program.h"
#include "request.h"
#include "respond.h"
#include "show.h"
#include "verify.h"

int main(int argc, char** argv) {
    CLI::App app("Ask for, give, check and show certificate status with OCSP (RFC 6960).", "mirvane-ocsp");
    addRequestCommand(app);
    addRespondCommand(app);
    addVerifyCommand(app);
    addShowCommand(app);
    return tools::run(app, argc, argv);
}
