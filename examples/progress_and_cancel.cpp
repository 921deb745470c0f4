// A long analysis that tells how far it is and stops at Ctrl-C: two tests on the same cases, compared.
//
//     progress_and_cancel [NUMBER OF CASES]
//
// The cases come from a generator. Nothing but one record of them is ever held in memory by this host.

#include "host/CancelFlag.h"
#include "host/FunctionListener.h"
#include "host/MultiPassRecordIter.h"
#include "host/VexVarList.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCStatusCodes.h"
#include "vexrocproc/RocAlgorithm.h"

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

enum Variable { state, firstTest, secondTest, variableCount };

/// A host's own iterator. Every pass must deliver the same records in the same order.
class GeneratedCases final : public VexCommon_920::MultiPassRecordIter {
public:
    explicit GeneratedCases(long count) : count_(count) {}

    bool HasMore() const override { return next_ < count_; }
    VexCommon_920::Record* Next() override
    {
        if (!HasMore())
            return nullptr;
        ++next_;
        const double sick = random() % 4 == 0 ? 1.0 : 0.0;
        record_[state] = sick;
        record_[firstTest] = static_cast<double>(random() % 1000) + 300.0 * sick;
        record_[secondTest] = static_cast<double>(random() % 1000) + 200.0 * sick;
        return &record_; // ours, and good until the next call
    }
    int GetFailReason() const override { return HasMore() ? 0 : 1; }
    int NewPass() override
    {
        next_ = 0;
        seed_ = firstSeed;
        return 0;
    }

private:
    static constexpr std::uint64_t firstSeed = 1;

    std::uint64_t random()
    {
        seed_ = seed_ * 6364136223846793005U + 1442695040888963407U;
        return seed_ >> 33;
    }

    VexCommon_920::Record record_{variableCount};
    long count_;
    long next_ = 0;
    std::uint64_t seed_ = firstSeed;
};

VexCommon_920::CancelFlag cancelFlag; // global: the signal handler trips it

extern "C" void onInterrupt(int)
{
    cancelFlag.Request(); // safe in a signal handler; the run ends before its next record
}

void showProgress(VexCommon_920::ProgressReport& report)
{
    std::printf("%3.0f %% done, %d records read\n", 100.0 * report.ScaleMeasure("percentage"),
                report.DiscreteMeasure("records"));
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    GeneratedCases cases(argc > 1 ? std::atol(argv[1]) : 2500);
    VexXML_920::VexVarList variables;
    variables.AddTwoValued("sick", {{0, "no"}, {1, "yes"}});
    variables.AddContinuous("first test");
    variables.AddContinuous("second test");

    ROCALG_920::ROCSetting setting;
    setting.setStateVar(state, 1.0);
    setting.setTestVars({firstTest, secondTest});
    setting.setComparisonType(ROCConst_920::PairedComparison);

    ROCALG_920::RocAlgorithm analysis(setting, variables);
    VexCommon_920::FunctionListener listener(showProgress);
    analysis.SetProgressListener(&listener);
    analysis.SetCancelPtr(&cancelFlag);
    std::signal(SIGINT, onInterrupt);

    const VexCommon_920::VexStatus status = analysis.BuildModel(cases);
    if (status.GetErrorCode() == ROCALG_920::statusCode::cancelled) {
        std::puts("cancelled, no results");
        return 130;
    }
    if (status.IsError()) {
        std::fprintf(stderr, "the analysis ended with code %ld\n", status.GetErrorCode());
        return 1;
    }
    for (const ROCALG_920::ROCComparisonOutStats* pair : analysis.GetOutputStats()->getROCComparisonStats())
        std::printf("difference of the areas %.4f, standard error %.4f, significance %.4f\n", pair->getAUCDiff(),
                    pair->getStdErrorDiff(), pair->getAsymptoticSig());
    return 0;
}
