#include "vexrocproc/analysis.h"

#include "calls/AnalysisHandle.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace ROCALG_920 {
namespace {

// A buffer of its own: to keep an error, a text that allocates could itself fail.
thread_local char lastError[512] = "";

int fail(vexroc_result result, const char* message) noexcept
{
    const std::size_t length = std::min(std::strlen(message), sizeof lastError - 1);
    std::memcpy(lastError, message, length);
    lastError[length] = '\0';
    return result;
}

/// Runs the work and turns what it throws into a result.
template <class Work>
int guarded(Work&& work) noexcept
{
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return fail(VEXROC_NO_MEMORY, "not enough memory");
    } catch (const InvalidArgument& error) {
        return fail(VEXROC_INVALID, error.what());
    } catch (const std::exception& error) {
        return fail(VEXROC_FAILED, error.what());
    } catch (...) {
        return fail(VEXROC_FAILED, "an unknown exception");
    }
}

template <class T>
T& required(T* pointer, const char* what)
{
    if (pointer == nullptr)
        throw InvalidArgument(std::string(what) + " is null");
    return *pointer;
}

/// The handle, for a call that changes it.
vexroc_analysis& idle(vexroc_analysis* analysis)
{
    vexroc_analysis& handle = required(analysis, "analysis");
    if (handle.running)
        throw InvalidArgument("the analysis is running: a callback must not call with its handle");
    return handle;
}

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

template <class List>
const auto& at(const List& list, int index, const char* what)
{
    if (index < 0 || static_cast<std::size_t>(index) >= list.size())
        throw InvalidArgument(std::string("no ") + what + ' ' + std::to_string(index) + "; there are "
                              + std::to_string(list.size()));
    return list[static_cast<std::size_t>(index)];
}

/// What a number of the last run is; 0 without one.
template <class Number>
int numberOf(const vexroc_analysis* analysis, Number number) noexcept
{
    const bool hasRun = analysis != nullptr && !analysis->running && analysis->run != nullptr;
    return hasRun ? static_cast<int>(number(*analysis->run)) : 0;
}

/// Copies as much of the result as the caller's structure, whose first member is its size, has room for.
template <class Result>
int deliver(const Result& result, Result* out)
{
    const std::size_t size = required(out, "the result structure").struct_size;
    if (size < sizeof(std::size_t))
        throw InvalidArgument("struct_size is not set: give it the sizeof of the structure");
    std::memcpy(static_cast<void*>(out), &result, std::min(size, sizeof result));
    out->struct_size = size;
    return VEXROC_OK;
}

vexroc_record toC(const ROCOutBase& record)
{
    const auto [ksMaximum, ksCutOff] = record.getKolmogorovSmirnov();
    vexroc_record out{};
    out.test = record.getTestVarInd();
    out.group = record.getGroupVarInd();
    out.group_operation = record.getGroupValueOperation();
    out.ties = record.existTies();
    out.group_value = record.getGroupValue();
    out.positive = record.getPositiveCount();
    out.negative = record.getNegativeCount();
    out.weighted_positive = record.getPosFreqCount();
    out.weighted_negative = record.getNegFreqCount();
    out.area = record.getArea();
    out.std_error = record.getStdError();
    out.significance = record.getAsymptoticSig();
    out.ci_lower = record.getCILower();
    out.ci_upper = record.getCIUpper();
    out.gini = record.getGiniIndex();
    out.ks_maximum = ksMaximum;
    out.ks_cut_off = ksCutOff;
    out.curve_rows = static_cast<int>(record.getSensitivitySpecificity().size());
    out.pr_rows = static_cast<int>(record.getPrecisionRecallDraw().size());
    out.distribution_changed = record.isDistrbutionChanged();
    return out;
}

void put(double* column, std::size_t row, double value)
{
    if (column != nullptr)
        column[row] = value;
}

} // namespace
} // namespace ROCALG_920

using namespace ROCALG_920;

int vexroc_analysis_version(void) { return VEXROC_ANALYSIS_VERSION; }

const char* vexroc_last_error(void) { return lastError; }

int vexroc_analysis_new(vexroc_analysis** analysis)
{
    return guarded([&] {
        vexroc_analysis*& handle = required(analysis, "the place for the handle");
        handle = nullptr;
        handle = new vexroc_analysis;
        return VEXROC_OK;
    });
}

void vexroc_analysis_free(vexroc_analysis* analysis) { delete analysis; }

int vexroc_analysis_add_column(vexroc_analysis* analysis, const char* name, const double* values, long long rows,
                               int* column)
{
    return guarded([&] {
        vexroc_analysis& handle = idle(analysis);
        required(name, "the name of the column");
        if (rows < 0 || rows > std::numeric_limits<int>::max())
            throw InvalidArgument("column \"" + std::string(name) + "\": " + std::to_string(rows)
                                  + " rows; there may be 0 to 2147483647");
        if (rows > 0)
            required(values, "the array of values");
        const int index = handle.request.addColumn(name, {values, static_cast<std::size_t>(rows)});
        if (column != nullptr)
            *column = index;
        return VEXROC_OK;
    });
}

int vexroc_analysis_set_column(vexroc_analysis* analysis, const char* setting, int column)
{
    return guarded([&] {
        idle(analysis).request.setColumn(&required(setting, "the name of the setting"), column);
        return VEXROC_OK;
    });
}

int vexroc_analysis_set_number(vexroc_analysis* analysis, const char* setting, double value)
{
    return guarded([&] {
        idle(analysis).request.setNumber(&required(setting, "the name of the setting"), value);
        return VEXROC_OK;
    });
}

int vexroc_analysis_set_word(vexroc_analysis* analysis, const char* setting, const char* word)
{
    return guarded([&] {
        idle(analysis).request.setWord(&required(setting, "the name of the setting"), &required(word, "the word"));
        return VEXROC_OK;
    });
}

int vexroc_analysis_on_progress(vexroc_analysis* analysis, vexroc_progress callback, void* user)
{
    return guarded([&] {
        AnalysisRun::Callbacks& callbacks = idle(analysis).callbacks;
        callbacks.progress = callback;
        callbacks.progressUser = user;
        return VEXROC_OK;
    });
}

int vexroc_analysis_on_cancel(vexroc_analysis* analysis, vexroc_cancel callback, void* user)
{
    return guarded([&] {
        AnalysisRun::Callbacks& callbacks = idle(analysis).callbacks;
        callbacks.cancel = callback;
        callbacks.cancelUser = user;
        return VEXROC_OK;
    });
}

int vexroc_analysis_run(vexroc_analysis* analysis)
{
    return guarded([&]() -> int {
        vexroc_analysis& handle = idle(analysis);
        handle.run.reset();
        struct Running {
            bool& flag;
            explicit Running(bool& running) : flag(running) { flag = true; }
            ~Running() { flag = false; }
        } running(handle.running);
        handle.refused = true; // unless the next line gets past
        handle.run = std::make_unique<AnalysisRun>(handle.request, handle.callbacks);
        handle.refused = false;
        if (handle.run->ranOutOfMemory())
            throw std::bad_alloc();
        const int code = handle.run->statusCode();
        if (code == statusCode::cancelled)
            return fail(VEXROC_CANCELLED, "cancelled");
        if (code != statusCode::noError)
            return fail(VEXROC_NO_RESULT,
                        ("the analysis ended with " + std::to_string(code) + ' ' + handle.run->statusName()).c_str());
        return VEXROC_OK;
    });
}

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
    return numberOf(analysis, [](const AnalysisRun& run) { return run.leftOut(); });
}

int vexroc_analysis_warning(const vexroc_analysis* analysis, int index, vexroc_warning* warning)
{
    return guarded([&] {
        const AnalysisRun::Warning& found = at(lastRun(analysis).warnings(), index, "warning");
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
    return guarded([&] { return deliver(toC(*at(lastRun(analysis).records(), index, "record")), record); });
}

int vexroc_analysis_comparison(const vexroc_analysis* analysis, int index, vexroc_comparison* comparison)
{
    return guarded([&] {
        const AnalysisRun& run = lastRun(analysis);
        const ROCComparisonOutStats& found = *at(run.comparisons(), index, "comparison");
        const auto records = run.records();
        const auto indexOf = [&](const ROCOutBase* record) {
            return static_cast<int>(std::ranges::find(records, record) - records.begin());
        };
        vexroc_comparison out{};
        out.first = indexOf(found.getCompare1Stats());
        out.second = indexOf(found.getCompare2Stats());
        out.difference = found.getAUCDiff();
        out.std_error = found.getStdErrorDiff();
        out.z = found.getZStats();
        out.significance = found.getAsymptoticSig();
        out.ci_lower = found.getCILower();
        out.ci_upper = found.getCIUpper();
        return deliver(out, comparison);
    });
}

int vexroc_analysis_curve(const vexroc_analysis* analysis, int record, double* cut_offs, double* sensitivity,
                          double* specificity)
{
    return guarded([&] {
        const ROCOutBase& found = *at(lastRun(analysis).records(), record, "record");
        const auto& points = found.getSensitivitySpecificity();
        for (std::size_t i = 0; i < points.size(); ++i) {
            put(cut_offs, i, found.getCutOffPoints()[i]);
            put(sensitivity, i, points[i].first);
            put(specificity, i, points[i].second);
        }
        return VEXROC_OK;
    });
}

int vexroc_analysis_precision_recall(const vexroc_analysis* analysis, int record, double* precision, double* recall,
                                     unsigned char* interpolated)
{
    return guarded([&] {
        const ROCOutBase& found = *at(lastRun(analysis).records(), record, "record");
        const auto& points = found.getPrecisionRecallDraw();
        const auto& measured = found.getPrecisionRecallCoordinates(); // in the same order
        // An interpolated point never equals the measured one after it: its recall lies strictly between its
        // neighbours'. Bits, not values: a precision may be NaN.
        const auto same = [](const auto& a, const auto& b) {
            return std::memcmp(&a.first, &b.first, sizeof a.first) == 0
                && std::memcmp(&a.second, &b.second, sizeof a.second) == 0;
        };
        for (std::size_t i = 0, next = 0; i < points.size(); ++i) {
            const bool isMeasured = next < measured.size() && same(points[i], measured[next]);
            next += isMeasured;
            put(precision, i, points[i].first);
            put(recall, i, points[i].second);
            if (interpolated != nullptr)
                interpolated[i] = !isMeasured;
        }
        return VEXROC_OK;
    });
}
