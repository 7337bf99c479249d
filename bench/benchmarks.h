// Each file of benchmarks registers its own.
#ifndef MIRVANE_BENCH_BENCHMARKS_H
#define MIRVANE_BENCH_BENCHMARKS_H

namespace bench {

void addCodecBenchmarks();
void addProviderBenchmarks();

}  // namespace bench

#endif
