#include "calls/AnalysisHandle.h"
#include "calls/RemarksHandle.h"
#include "calls/guard.h"
#include "vexrocproc/analysis.h"

#include <algorithm>

namespace ROCALG_920::calls {
namespace {

const AnalysisRun& lastRun(const vexroc_analysis* analysis)
{
    const vexroc_analysis& handle = required(analysis, "analysis");
    if (handle.running)
        throw InvalidArgument("there are no results yet: the analysis is running");
    if (handle.refused)
        throw InvalidArgument("there are no results: the last run was refused; set right what it complained about and "
                              "call vexroc_analysis_run again");
    if (handle.run == nullptr)
        throw InvalidArgument("there are no results: call vexroc_analysis_run first");
    return *handle.run;
}

/// What a number of the last run is; 0 without one.
template <class Number>
int numberOf(const vexroc_analysis* analysis, Number number) noexcept
{
    const bool hasRun = analysis != nullptr && !analysis->running && analysis->run != nullptr;
    return hasRun ? static_cast<int>(number(*analysis->run)) : 0;
}

const AnalysisRun::Record& recordOf(const vexroc_analysis* analysis, int index)
{
    return at(lastRun(analysis).records(), index, "record");
}

} // namespace
} // namespace ROCALG_920::calls

using namespace ROCALG_920;
using namespace ROCALG_920::calls;

int vexroc_analysis_status(const vexroc_analysis* analysis, int* code, const char** name)
{
    return guarded([&] {
        const AnalysisRun& run = lastRun(analysis);
        if (code != nullptr)
            *code = run.statusCode();
        if (name != nullptr)
            *name = run.statusName().c_str();
        return VEXROC_OK;
    });
}

int vexroc_analysis_warning_count(const vexroc_analysis* analysis)
{
    return numberOf(analysis, [](const AnalysisRun& run) { return run.warnings().size(); });
}

int vexroc_analysis_record_count(const vexroc_analysis* analysis)
{
    return numberOf(analysis, [](const AnalysisRun& run) { return run.records().size(); });
}

int vexroc_analysis_comparison_count(const vexroc_analysis* analysis)
{
    return numberOf(analysis, [](const AnalysisRun& run) { return run.comparisons().size(); });
}

int vexroc_analysis_left_out_count(const vexroc_analysis* analysis)
{
    return numberOf(analysis, [](const AnalysisRun& run) { return run.rows().withoutParts(); });
}

int vexroc_analysis_rows(const vexroc_analysis* analysis, vexroc_rows* rows)
{
    return guarded([&] { return deliver(lastRun(analysis).rows().rows, rows); });
}

int vexroc_analysis_missing_test(const vexroc_analysis* analysis, int column, long long* positive, long long* negative)
{
    return guarded([&] {
        const std::vector<RowTally::UnknownTest>& gaps = lastRun(analysis).rows().gaps;
        const auto found = std::ranges::lower_bound(gaps, column, {}, &RowTally::UnknownTest::column);
        if (found == gaps.end() || found->column != column)
            throw InvalidArgument("column " + std::to_string(column) + " was no test of the last run");
        put(positive, 0, found->positive);
        put(negative, 0, found->negative);
        return VEXROC_OK;
    });
}

int vexroc_analysis_warning(const vexroc_analysis* analysis, int index, vexroc_warning* warning)
{
    return guarded([&] {
        const AnalysisRun::RunWarning& found = at(lastRun(analysis).warnings(), index, "warning");
        vexroc_warning out{};
        out.name = found.name.c_str();
        out.parameters = found.parameters.data();
        out.parameter_count = static_cast<int>(found.parameters.size());
        out.code = found.code;
        return deliver(out, warning);
    });
}

int vexroc_analysis_record(const vexroc_analysis* analysis, int index, vexroc_record* record)
{
    return guarded([&] { return deliver(recordOf(analysis, index).told, record); });
}

int vexroc_analysis_record_rows(const vexroc_analysis* analysis, int record, long long* read, long long* usable)
{
    return guarded([&] {
        const GroupRows& rows = recordOf(analysis, record).rows;
        put(read, 0, rows.read);
        put(usable, 0, rows.usable);
        return VEXROC_OK;
    });
}

int vexroc_analysis_summary(const vexroc_analysis* analysis, int record, const vexroc_summary** summary)
{
    return guarded([&] {
        const auto& kept = recordOf(analysis, record).summary;
        if (kept == nullptr)
            throw InvalidArgument("there are no summaries: set the number \"summaries\" to 1 before the run");
        required(summary, "the place for the summary") = kept.get();
        return VEXROC_OK;
    });
}

int vexroc_analysis_comparison(const vexroc_analysis* analysis, int index, vexroc_comparison* comparison)
{
    return guarded([&] { return deliver(at(lastRun(analysis).comparisons(), index, "comparison"), comparison); });
}

int vexroc_analysis_curve(const vexroc_analysis* analysis, int record, double* cut_offs, double* sensitivity,
                          double* specificity)
{
    return guarded([&] {
        const AnalysisRun::Record& found = recordOf(analysis, record);
        const auto& points = found.sensSpec();
        for (std::size_t i = 0; i < points.size(); ++i) {
            put(cut_offs, i, found.curve->getCutOffPoints()[i]);
            put(sensitivity, i, points[i].first);
            put(specificity, i, points[i].second);
        }
        return VEXROC_OK;
    });
}

int vexroc_analysis_curve_counts(const vexroc_analysis* analysis, int record, long long* true_positive,
                                 long long* false_positive)
{
    return guarded([&] {
        const AnalysisRun::Record& found = recordOf(analysis, record);
        for (std::size_t i = 0; i < found.sensSpec().size(); ++i) {
            const CutOffCounts counts = found.curve->point(i).counts;
            put(true_positive, i, counts.truePositives);
            put(false_positive, i, counts.falsePositives);
        }
        return VEXROC_OK;
    });
}

int vexroc_analysis_best_cut_off_count(const vexroc_analysis* analysis, int record)
{
    return numberOf(analysis, [&](const AnalysisRun& run) -> std::size_t {
        const auto i = static_cast<std::size_t>(record);
        return record >= 0 && i < run.records().size() ? run.records()[i].bestCutOffs.size() : 0;
    });
}

int vexroc_analysis_best_cut_off(const vexroc_analysis* analysis, int record, int index, vexroc_cut_off* cut_off)
{
    return guarded([&] { return deliver(at(recordOf(analysis, record).bestCutOffs, index, "best cut-off"), cut_off); });
}

int vexroc_analysis_precision_recall(const vexroc_analysis* analysis, int record, double* precision, double* recall,
                                     unsigned char* interpolated)
{
    return guarded([&] {
        const AnalysisRun::Record& found = recordOf(analysis, record);
        const auto& points = found.precisionRecall();
        for (std::size_t i = 0; i < points.size(); ++i) {
            put(precision, i, points[i].first);
            put(recall, i, points[i].second);
            put(interpolated, i, found.isInterpolated(i));
        }
        return VEXROC_OK;
    });
}

int vexroc_analysis_precision_recall_rows(const vexroc_analysis* analysis, int record, int* curve_rows)
{
    return guarded([&] {
        const AnalysisRun::Record& found = recordOf(analysis, record);
        const bool hasCurve = !found.sensSpec().empty();
        int measured = 0; // points so far, one per row of the curve
        for (std::size_t i = 0; i < found.precisionRecall().size(); ++i)
            put(curve_rows, i, hasCurve && !found.isInterpolated(i) ? measured++ : -1);
        return VEXROC_OK;
    });
}

int vexroc_analysis_remark_count(const vexroc_analysis* analysis)
{
    return numberOf(analysis, [](const AnalysisRun& run) { return run.remarkLines().size(); });
}

int vexroc_analysis_remark(const vexroc_analysis* analysis, int index, vexroc_remark* remark)
{
    return guarded([&] {
        const remarks::RemarkList::Line& line = at(lastRun(analysis).remarkLines(), index, "remark");
        return deliver({.struct_size = 0,
                        .code = line.kind.code.data(), // a literal
                        .caution = line.kind.caution,
                        .count = line.count,
                        .text = line.text.c_str()},
                       remark);
    });
}

int vexroc_analysis_add_remarks(const vexroc_analysis* analysis, vexroc_remarks* remarks, const char* prefix)
{
    return guarded([&] {
        vexroc_remarks& all = required(remarks, "the list of remarks");
        lastRun(analysis).remarks().sayTo(all.list, prefix != nullptr ? prefix : "");
        all.handedOut.clear();
        return VEXROC_OK;
    });
}
