/// Times the array calls and the facade. See docs/performance.md for what the figures say.

#include "benchmarks.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    registerArrayCalls();
    registerFacade();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
