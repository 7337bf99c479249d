// mirvane-asn1: look into any message whose type the library knows.
#include "commands.h"
#include "common/program.h"

int main(int argc, char** argv) {
    CLI::App app("Look into ASN.1 messages: certificates, OCSP, CMS, time stamps and what they hold.",
                 "mirvane-asn1");
    addTypesCommand(app);
    addPrintCommand(app);
    addRecodeCommand(app);
    addOidCommand(app);
    return tools::run(app, argc, argv);
}
