#include "calls/AnalysisRun.h"

#include "calls/RecordArea.h"
#include "calls/TestPairs.h"
#include "calls/guard.h"
#include "calls/toldResults.h"
#include "numeric/DefaultArithmetic.h"
#include "summary/Observations.h"
#include "summary/Summary.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <new>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace ROCALG_920::calls {

namespace {

using namespace ROCConst_920;

/// As the library displays it; it has no names for the ends that are no fault of the settings or the data.
std::string nameOf(int code)
{
    if (code == statusCode::cancelled)
        return "Cancelled";
    if (code == statusCode::unexpected)
        return "Unexpected_Failure";
    std::string name;
    ROCComponentDisplay::ParseErrCodeToStr(code, name);
    return name;
}

/// Is a case with this value one of the record's group?
bool isMember(const ROCOutBase& record, double groupValue)
{
    switch (record.getGroupValueOperation()) {
    case Equal: return groupValue == record.getGroupValue();
    case GreaterOrEqual: return groupValue >= record.getGroupValue();
    case Less: return groupValue < record.getGroupValue();
    }
    return false; // no such operation
}

/// Which runs of the component answer a request.
class RunPlan {
public:
    RunPlan(const AnalysisRequest& request, const RowTally& rows)
        : request_(request), comparesInOneRun_(!request.isPaired() || pairsFitOneRun(rows))
    {
    }

    /// Are all comparisons those of the component?
    [[nodiscard]] bool comparesInOneRun() const noexcept { return comparesInOneRun_; }
    [[nodiscard]] std::vector<FacadeRun::Plan> runs() const
    {
        const ComparisonType comparison = comparesInOneRun_ ? request_.options().getComparisonType() : NoComparison;
        std::map<std::size_t, FacadeRun::Plan> runs; // by their first test
        std::map<Direction, std::size_t> firstOf;
        for (std::size_t test = 0; test < request_.tests().size(); ++test) {
            const std::size_t first = settlesAlone()
                ? test
                : firstOf.try_emplace(request_.directionOf(request_.tests()[test]), test).first->second;
            runs.try_emplace(first, FacadeRun::Plan{{}, comparison, comparesInOneRun_})
                .first->second.tests.push_back(test);
        }
        std::vector<FacadeRun::Plan> list;
        for (auto& [first, plan] : runs)
            list.push_back(std::move(plan));
        return list;
    }

private:
    [[nodiscard]] bool isBiNegative() const { return request_.distribution() == BiNegativeExponential; }
    /// In one run, a test with unequal counts takes the assumption from the others.
    [[nodiscard]] bool settlesAlone() const { return isBiNegative() && request_.interval() != IntervalKind::record; }

    [[nodiscard]] bool pairsFitOneRun(const RowTally& rows) const
    {
        const bool complete = request_.pairedRows() == PairedRows::complete;
        const bool sameRows = complete || rows.gapsAreEqual();
        const bool knowsErrors = !isBiNegative() || (complete && request_.interval() == IntervalKind::record);
        return request_.tests().size() < 2 || (request_.hasOneDirection() && sameRows && knowsErrors);
    }

    const AnalysisRequest& request_;
    bool comparesInOneRun_;
};

} // namespace

/// The making of a run.
class AnalysisRun::Assembly {
public:
    Assembly(AnalysisRun& run, const AnalysisRequest& request, const RunCallbacks& callbacks)
        : run_(run), request_(request), rule_(request.rowRule()),
          selection_(request.columns(), rule_, request.weighingName()), plan_(request, selection_.counts()),
          zCritical_(criticalValue(request.options().getConfidienceLevel())),
          areas_(request, request.isPaired() && plan_.comparesInOneRun()),
          watch_(callbacks,
                 static_cast<double>(request.tests().size())
                     * (1 + (areas_.takesLong() ? 1 : 0) + (plan_.comparesInOneRun() ? 0 : 1)))
    {
        run.rows_ = selection_.counts();
        if (!plan_.comparesInOneRun() && rule_.needsAllTests)
            selection_.blankIncomplete(rule_);
    }

    /// Leaves the status of the first part that does not end well.
    void work()
    {
        for (const FacadeRun::Plan& plan : plan_.runs()) {
            watch_.beginPart(static_cast<double>(plan.tests.size()));
            const FacadeRun& part = run_.runs_.emplace_back(request_, plan, selection_.columns(), watch_);
            run_.statusCode_ = part.statusCode();
            run_.ranOutOfMemory_ = part.ranOutOfMemory();
            if (part.statusCode() != statusCode::noError) {
                addWarnings(part, [](int) { return true; });
                return;
            }
        }
        endAsARun([this] { listResults(); });
        if (run_.statusCode_ != statusCode::noError) {
            run_.records_.clear();
            run_.comparisons_.clear();
        }
    }

private:
    /// Stopped by a callback or by lack of memory, the work ends as a run of the component does.
    template <class Work>
    void endAsARun(Work&& work)
    {
        try {
            work();
        } catch (const InvalidArgument&) {
            throw; // what was asked for cannot be
        } catch (const std::bad_alloc&) {
            run_.statusCode_ = statusCode::unexpected;
            run_.ranOutOfMemory_ = true;
        } catch (...) {
            run_.statusCode_ = statusCode::unexpected;
        }
    }

    void listResults()
    {
        if (!listRecords()) {
            run_.statusCode_ = statusCode::cancelled;
            return;
        }
        if (plan_.comparesInOneRun())
            listComparisons();
        else
            comparePairs();
        listWarnings();
    }

    /// In the order of the tests, whatever runs they were in. False when it was cancelled.
    [[nodiscard]] bool listRecords()
    {
        std::vector<std::span<ROCOutBase* const>> ofTest(request_.tests().size());
        for (const FacadeRun& part : run_.runs_) {
            const std::vector<std::size_t>& tests = part.plan().tests;
            const std::size_t groups = part.records().size() / tests.size();
            for (std::size_t i = 0; i < tests.size(); ++i)
                ofTest[tests[i]] = part.records().subspan(i * groups, groups);
        }
        for (std::size_t test = 0; test < ofTest.size(); ++test)
            for (const ROCOutBase* const record : ofTest[test]) {
                if (areas_.takesLong())
                    watch_.beginPart(1.0 / static_cast<double>(ofTest[test].size()));
                if (!addRecord(request_.tests()[test], RunRecord::of(*record)))
                    return false;
            }
        return true;
    }

    [[nodiscard]] bool addRecord(int test, const RunRecord& record)
    {
        indexOf_[&record] = static_cast<int>(run_.records_.size());
        Record made{&record, toldRecord(record), rowsOf(record), {}, nullptr, std::nullopt};
        made.told.test = test;
        made.told.group = record.getGroupVarInd() < 0 ? AnalysisRequest::none : request_.group();
        made.told.smaller_is_positive = request_.directionOf(test) == SmallerMorePositive;
        made.told.distinct_values = record.triples() ? distinctValues(record, test) : 0;
        const auto cases = [&]() -> const WeightedSummary& {
            if (made.summary == nullptr)
                made.summary = summaryOf(record, test);
            return made.summary->sample();
        };
        if (!areas_.settle(record.triples(), cases, watch_, made.told))
            return false;
        for (const OperatingPoint& point : record.bestCutOffs())
            made.bestCutOffs.push_back(toldCutOff(point));
        if (request_.hasProbabilities())
            weigh(cases(), made);
        if (request_.keepsSummaries())
            cases();
        else
            made.summary.reset();
        run_.records_.push_back(std::move(made));
        return true;
    }

    /// In place of the rates and the best cut-offs of cases, those of their weights.
    void weigh(const WeightedSummary& sample, Record& made) const
    {
        const ROCSetting& options = request_.options();
        const bool larger = made.told.smaller_is_positive == 0;
        const std::vector<double>& cutOffs = made.curve->getCutOffPoints();
        WeightedCurve& curve =
            made.weighted.emplace(weightedCurve(sample, cutOffs, {options.isIncludeCutOff(), larger}));
        if (!options.needROC())
            curve.sensSpec.clear();
        if (!options.needPR())
            curve.precisionRecall.clear();
        const auto [positives, negatives] = sample.weightsAsGiven();
        made.told.weighted_positive = positives;
        made.told.weighted_negative = negatives;
        made.told.pr_rows = static_cast<int>(curve.precisionRecall.size());
        const auto youden = [&](std::size_t i) {
            return youdenIndex(curve.sensSpec[i].first, curve.sensSpec[i].second);
        };
        KolmogorovSmirnov ks;
        for (std::size_t i = 0; i < curve.sensSpec.size(); ++i)
            ks.take(cutOffs[i], youden(i), larger);
        made.told.ks_maximum = ks.maximum();
        made.told.ks_cut_off = ks.cutOff();
        made.bestCutOffs.clear();
        for (std::size_t i = 0; i < curve.sensSpec.size(); ++i)
            if (ks.isTie(youden(i)))
                made.bestCutOffs.push_back(toldCutOff(made.curve->point(i), curve.sensSpec[i]));
    }

    using Row = RowOf<std::vector<std::span<const double>>>;

    /// Calls visit(row, positive) for the cases of the record, until it answers false.
    template <class Visit>
    void visitCases(const RunRecord& record, int test, Visit&& visit) const
    {
        const auto& columns = selection_.columns();
        bool goesOn = true;
        for (std::size_t i = 0; goesOn && i < columns[static_cast<std::size_t>(test)].size(); ++i) {
            const Row row{columns, i};
            const RowPart part = rule_.of(row);
            const bool isCase = isUsable(part.fate) && !std::isnan(row[test])
                && (record.getGroupVarInd() < 0 || isMember(record, row[rule_.group]));
            goesOn = !isCase || visit(row, part.positive);
        }
    }

    /// The cases of the record, ordered anew.
    [[nodiscard]] std::unique_ptr<const vexroc_summary> summaryOf(const RunRecord& record, int test) const
    {
        auto summary = std::make_unique<vexroc_summary>();
        if (request_.hasProbabilities()) {
            std::vector<WeightedCase> cases;
            visitCases(record, test, [&](const Row& row, bool positive) {
                cases.push_back({row[test], row[rule_.weight], positive});
                return true;
            });
            summary->cases.add(cases);
        } else {
            Observations cases;
            visitCases(record, test, [&](const Row& row, bool positive) {
                cases.add(positive, row[test]);
                return true;
            });
            summary->cases.add(cases.visit([](const auto& columns) { return Summary(columns); }));
        }
        return summary;
    }

    /// As far as they matter: 3 for more as well. Mostly known after a few cases.
    [[nodiscard]] int distinctValues(const RunRecord& record, int test) const
    {
        constexpr int most = 3;
        std::array<double, most> known{};
        int count = 0;
        visitCases(record, test, [&](const Row& row, bool /*positive*/) {
            const auto end = known.begin() + count;
            if (std::find(known.begin(), end, row[test]) == end) // exact
                known[static_cast<std::size_t>(count++)] = row[test];
            return count < most;
        });
        return count;
    }

    [[nodiscard]] GroupRows rowsOf(const ROCOutBase& record)
    {
        if (record.getGroupVarInd() < 0)
            return {run_.rows_.rows.read, run_.rows_.usable()};
        const auto [rows, isNew] = groupRows_.try_emplace({record.getGroupValueOperation(), record.getGroupValue()});
        if (isNew)
            rows->second =
                countMembers(request_.columns(), rule_, [&](double value) { return isMember(record, value); });
        return rows->second;
    }

    /// Those of the component, in the order of the tests.
    void listComparisons()
    {
        for (const FacadeRun& part : run_.runs_)
            for (const ROCComparisonOutStats* const found : part.comparisons())
                addComparison(*found);
        std::ranges::stable_sort(run_.comparisons_, {}, &vexroc_comparison::first);
    }

    void addComparison(const ROCComparisonOutStats& found)
    {
        vexroc_comparison out = toldComparison(found, request_.alternative());
        out.first = indexOf_.at(found.getCompare1Stats());
        out.second = indexOf_.at(found.getCompare2Stats());
        const vexroc_record& first = run_.records_[static_cast<std::size_t>(out.first)].told;
        const vexroc_record& second = run_.records_[static_cast<std::size_t>(out.second)].told;
        const bool paired = request_.isPaired(); // then both are of the same cases, with DeLong's standard errors
        out.positive = first.positive + (paired ? 0 : second.positive);
        out.negative = first.negative + (paired ? 0 : second.negative);
        out.first_area = first.area;
        out.second_area = second.area;
        out.first_std_error = paired ? found.getCompare1Stats()->getStdError() : first.std_error;
        out.second_std_error = paired ? found.getCompare2Stats()->getStdError() : second.std_error;
        out.error = paired ? "delong" : first.error;
        if (!paired && !request_.hasErrorOfDistribution())
            setDifference(independentStdError(first.std_error, second.std_error), zCritical_, request_.alternative(),
                          out);
        run_.comparisons_.push_back(out);
    }

    void comparePairs()
    {
        const auto keep = [this](const vexroc_comparison& pair) { run_.comparisons_.push_back(pair); };
        watch_.beginPart(static_cast<double>(request_.tests().size()));
        if (!TestPairs(request_, selection_.columns(), rule_).compareAll(watch_, keep))
            run_.statusCode_ = statusCode::cancelled;
    }

    /// What is true of the whole once, with the tests that have ties: the component knows these only with a curve.
    void listWarnings()
    {
        if (!plan_.comparesInOneRun() && request_.group() != AnalysisRequest::none)
            addWarning(statusCode::groupIgnored, {});
        const auto isLate = [](int code) { return code == statusCode::distributionChanged; };
        const auto isEarly = [&](int code) { return !isLate(code) && code != statusCode::tiesExist; };
        for (const FacadeRun& part : run_.runs_)
            addWarnings(part, isEarly);
        std::vector<int> tied;
        for (const int test : request_.tests())
            if (std::ranges::any_of(run_.records_, [test](const Record& record) {
                    return record.told.test == test && record.told.ties != 0;
                }))
                tied.push_back(test);
        if (!tied.empty())
            addWarning(statusCode::tiesExist, std::move(tied));
        for (const FacadeRun& part : run_.runs_)
            addWarnings(part, isLate);
    }

    /// Those that hold, and are not listed yet.
    template <class Holds>
    void addWarnings(const FacadeRun& part, Holds&& holds)
    {
        const VexCommon_920::VexWarnings& warnings = part.warnings();
        for (int i = 0; i < warnings.GetCount(); ++i) {
            const int code = static_cast<int>(warnings.GetStatus(i).GetErrorCode());
            if (!holds(code) || std::ranges::find(run_.warnings_, code, &RunWarning::code) != run_.warnings_.end())
                continue;
            std::vector<int> columns;
            for (const auto& parameter : warnings.GetParameters(i))
                columns.push_back(part.columnOf(parameter.GetInt()));
            addWarning(code, std::move(columns));
        }
    }
    void addWarning(int code, std::vector<int> columns)
    {
        run_.warnings_.push_back({code, nameOf(code), std::move(columns)});
    }

    AnalysisRun& run_;
    const AnalysisRequest& request_;
    RowRule rule_;
    RowSelection selection_;
    RunPlan plan_;
    double zCritical_;
    RecordArea areas_;
    RunWatch watch_;
    std::unordered_map<const ROCOutBase*, int> indexOf_;    ///< of each record
    std::map<std::pair<int, double>, GroupRows> groupRows_; ///< by operation and value: there are two groups at most
};

AnalysisRun::AnalysisRun(const AnalysisRequest& request, const RunCallbacks& callbacks)
{
    const DefaultArithmetic arithmetic;
    request.check();
    Assembly(*this, request, callbacks).work();
    statusName_ = nameOf(statusCode_);
    remark(request);
}

void AnalysisRun::remark(const AnalysisRequest& request)
{
    remarks_.emplace(request, rows_);
    std::vector<vexroc_record> told;
    for (const Record& record : records_) {
        remarks_->addRecord(request, record.told);
        told.push_back(record.told);
    }
    for (const vexroc_comparison& comparison : comparisons_)
        remarks_->addComparison(request, told, comparison);
    if (std::ranges::find(warnings_, statusCode::groupIgnored, &RunWarning::code) != warnings_.end())
        remarks_->add("groups-ignored", "");
    remarks::RemarkList list(VEXROC_VOICE_C);
    remarks_->sayTo(list);
    for (std::size_t i = 0; i < list.size(); ++i)
        remarkLines_.push_back(list.line(i));
}

} // namespace ROCALG_920::calls
