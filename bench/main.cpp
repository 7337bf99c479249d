#include "benchmarks.h"
#include "counting.h"

int main(int argc, char** argv) {
    bench::installHooks();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    bench::addCodecBenchmarks();
    bench::addProviderBenchmarks();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
