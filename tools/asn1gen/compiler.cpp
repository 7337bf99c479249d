#include "asn1gen/compiler.h"

#include "asn1gen/checker.h"
#include "asn1gen/model_builder.h"
#include "asn1gen/parser.h"

namespace asn1gen {

// Each stage goes on after errors of the one before as far as its input allows; only the emitters need a
// whole model.
std::vector<GeneratedFile> compile(const std::deque<SourceFile>& sources, Diagnostics& diagnostics) {
    std::vector<syntax::File> files;
    files.reserve(sources.size());
    for (const SourceFile& source : sources)
        files.push_back(parse(source, diagnostics));
    Model model = buildModel(files, diagnostics);
    orderTypes(model, diagnostics);
    checkTags(model, diagnostics);
    checkIncludes(model, diagnostics);
    if (!diagnostics.empty()) return {};
    return emitFiles(model);
}

}  // namespace asn1gen
