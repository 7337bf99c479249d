// mirvane-ocsp: look into messages of the Online Certificate Status Protocol.
#include "common/program.h"
#include "show.h"

int main(int argc, char** argv) {
    CLI::App app("Look into messages of the Online Certificate Status Protocol (RFC 6960).", "mirvane-ocsp");
    addShowCommand(app);
    return tools::run(app, argc, argv);
}
