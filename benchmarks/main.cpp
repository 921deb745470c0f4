/// Times the array calls, the facade and the inference on one curve. See docs/performance.md for what the figures say.

#include "benchmarks.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    registerArrayCalls();
    registerFacade();
    registerInference();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
