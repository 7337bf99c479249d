// mirvane-ocsp: ask, answer, check and look into messages of the Online Certificate Status Protocol.
#include "common/program.h"
#include "request.h"
#include "respond.h"
#include "show.h"
#include "verify.h"

int main(int argc, char** argv) {
    return tools::run({"mirvane-ocsp",
                       "Ask for, give, check and show certificate status with OCSP (RFC 6960).",
                       {addRequestCommand, addRespondCommand, addVerifyCommand, addShowCommand}},
                      argc, argv);
}
