// Measures all works: how long they take, with the options of google-benchmark; with --counts what they
// allocate, as JSON on standard output. With --run WORK SIDE TIMES it does one work only, for a profiler:
// valgrind --tool=callgrind --toggle-collect='doOften*' mirvane-bench --run "certificate decode" ours 100
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

#include "counting.h"
#include "peers.h"
#include "works.h"

namespace {

bench::Works allWorks() {
    bench::Works works;
    bench::addDecodeWorks(works);
    bench::addEncodeWorks(works);
    bench::addCertificateWorks(works);
    bench::addSignatureWorks(works);
    bench::addPlatformWorks(works);
#ifdef MIRVANE_BENCH_GNUTLS
    bench::addGnutls(works);
#endif
#ifdef MIRVANE_BENCH_BOTAN
    bench::addBotan(works);
#endif
    return works;
}

void addBenchmark(const std::string& name, const std::function<void()>& work) {
    if (!work) return;
    benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State& state) {
        try {
            work();  // what is made at the first time is not meant
            for (auto _ : state)
                work();
        } catch (const std::exception& failure) {
            state.SkipWithError(failure.what());
        }
    });
}

void printCounts(const char* side, const std::function<void()>& work) {
    const bench::Allocations made = bench::allocationsOf(work);
    const auto number = [](std::uint64_t value) { return static_cast<unsigned long long>(value); };
    std::printf("\"%s\": {\"allocations\": %llu, \"bytes\": %llu, \"peak\": %llu}", side, number(made.count),
                number(made.bytes), number(made.peak));
}

void printAllCounts(const bench::Works& works) {
    const char* before = "[\n";
    for (const bench::Work& work : works) {
        std::printf("%s  {\"name\": \"%s\", \"input_octets\": %zu, ", before, work.name.c_str(),
                    work.inputOctets);
        printCounts("ours", work.ours);
        std::printf(", ");
        printCounts("openssl", work.openssl);
        std::printf("}");
        before = ",\n";
    }
    std::printf("\n]\n");
}

}  // namespace

[[gnu::noinline]] void doOften(const std::function<void()>& work, int times) {
    for (int i = 0; i < times; ++i)
        work();
}

namespace {

int runOne(std::string_view name, std::string_view side, int times) {
    for (const bench::Work& work : allWorks()) {
        if (work.name != name) continue;
        const auto& done = side == "ours" ? work.ours : side == "openssl" ? work.openssl : work.floor;
        if (!done) return 2;
        done();
        doOften(done, times);
        return 0;
    }
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::string_view(argv[1]) == "--counts") {
        bench::installHooks();
        printAllCounts(allWorks());
        return 0;
    }
    if (argc == 5 && std::string_view(argv[1]) == "--run")
        return runOne(argv[2], argv[3], std::atoi(argv[4]));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    for (const bench::Work& work : allWorks()) {
        addBenchmark(work.name + "/ours", work.ours);
        addBenchmark(work.name + "/openssl", work.openssl);
        addBenchmark(work.name + "/floor", work.floor);
        for (const bench::Peer& peer : work.peers)
            addBenchmark(work.name + "/" + peer.name, peer.work);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
