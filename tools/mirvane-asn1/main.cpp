// mirvane-asn1: look into any message whose type the library knows.
#include "commands.h"
#include "common/program.h"

int main(int argc, char** argv) {
    return tools::run({"mirvane-asn1",
                       "Look into ASN.1 messages: certificates, OCSP, CMS, time stamps and what they hold.",
                       {addTypesCommand, addPrintCommand, addRecodeCommand, addOidCommand}},
                      argc, argv);
}
