// The schema compiler on text of all kinds: errors are reported, and without any there is code.
#include <deque>
#include <sstream>

#include "asn1gen/compiler.h"
#include "fuzz/target.h"

MIRVANE_FUZZ_TARGET(schema_text, fuzz::kNoElements) {
    const std::deque<asn1gen::SourceFile> sources = {{"schema.asn1", input.text()}};
    asn1gen::Diagnostics diagnostics;
    const auto files = asn1gen::compile(sources, diagnostics);
    fuzz::require(files.empty() == !diagnostics.empty(), "there is code or there are errors");
    std::ostringstream messages;
    diagnostics.print(messages);
    fuzz::require(messages.str().empty() == diagnostics.empty(), "an error has a message");
}
