#include "vexrocproc/analysis.h"

#include "calls/AnalysisHandle.h"
#include "calls/guard.h"
#include "calls/settingsByName.h"
#include "calls/toldResults.h"
#include "numeric/DefaultArithmetic.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <limits>
#include <new>

namespace ROCALG_920::calls {
namespace {

/// The handle, for a call that changes it.
vexroc_analysis& idle(vexroc_analysis* analysis)
{
    vexroc_analysis& handle = required(analysis, "analysis");
    if (handle.running)
        throw InvalidArgument("the analysis is running: a callback must not call with its handle");
    return handle;
}

std::string lineOf(const char* code)
{
    remarks::RemarkList list(VEXROC_VOICE_C);
    list.add(*remarks::kindOf(code), {});
    return list.line(0).text;
}

/// Why a run that was not refused came to no result.
std::string reasonOf(int status)
{
    switch (status) {
    case statusCode::stateValueNotFound: return lineOf("no-positive");
    case statusCode::noData: return lineOf("no-case");
    case statusCode::fewerThanTwoTestVars: return "a paired comparison needs two tests; set one more column \"test\"";
    case statusCode::groupRequired: return "an independent comparison needs two groups; set the column \"group\"";
    case statusCode::groupConstant: return "all values of the group are equal, so there is one group only";
    case statusCode::groupEmpty: return "a group holds no case of a test, so there is nothing to compare";
    default: return "the analysis broke off";
    }
}

} // namespace
} // namespace ROCALG_920::calls

using namespace ROCALG_920;
using namespace ROCALG_920::calls;

int vexroc_analysis_version(void) { return VEXROC_ANALYSIS_VERSION; }

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
        setColumn(idle(analysis).request, &required(setting, "the name of the setting"), column);
        return VEXROC_OK;
    });
}

int vexroc_analysis_set_number(vexroc_analysis* analysis, const char* setting, double value)
{
    return guarded([&] {
        setNumber(idle(analysis).request, &required(setting, "the name of the setting"), value);
        return VEXROC_OK;
    });
}

int vexroc_analysis_set_word(vexroc_analysis* analysis, const char* setting, const char* word)
{
    return guarded([&] {
        setWord(idle(analysis).request, &required(setting, "the name of the setting"), &required(word, "the word"));
        return VEXROC_OK;
    });
}

int vexroc_analysis_add_negative(vexroc_analysis* analysis, double value)
{
    return guarded([&] {
        requireNumber("negative", value);
        idle(analysis).request.addNegative(value);
        return VEXROC_OK;
    });
}

int vexroc_analysis_set_direction(vexroc_analysis* analysis, int column, const char* word)
{
    return guarded([&] {
        setDirection(idle(analysis).request, column, word);
        return VEXROC_OK;
    });
}

int vexroc_analysis_name_value(vexroc_analysis* analysis, int column, double value, const char* name)
{
    return guarded([&] {
        AnalysisRequest& request = idle(analysis).request;
        requireColumn(request, "name_value", column);
        requireNumber("name_value", value);
        request.nameValue(column, value, &required(name, "the name of the value"));
        return VEXROC_OK;
    });
}

int vexroc_analysis_on_progress(vexroc_analysis* analysis, vexroc_progress callback, void* user)
{
    return guarded([&] {
        RunCallbacks& callbacks = idle(analysis).callbacks;
        callbacks.progress = callback;
        callbacks.progressUser = user;
        return VEXROC_OK;
    });
}

int vexroc_analysis_on_cancel(vexroc_analysis* analysis, vexroc_cancel callback, void* user)
{
    return guarded([&] {
        RunCallbacks& callbacks = idle(analysis).callbacks;
        callbacks.cancel = callback;
        callbacks.cancelUser = user;
        return VEXROC_OK;
    });
}

int vexroc_analysis_on_parallel(vexroc_analysis* analysis, vexroc_parallel callback, void* user)
{
    return guarded([&] {
        RunCallbacks& callbacks = idle(analysis).callbacks;
        callbacks.parallel = callback;
        callbacks.parallelUser = user;
        return VEXROC_OK;
    });
}

int vexroc_analysis_set_seed(vexroc_analysis* analysis, unsigned long long seed)
{
    return guarded([&] {
        idle(analysis).request.setSeed(seed);
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
                        (reasonOf(code) + " (" + std::to_string(code) + ' ' + handle.run->statusName() + ')').c_str());
        return VEXROC_OK;
    });
}

double vexroc_two_sided_p(double z, double* log10_p)
{
    const DefaultArithmetic arithmetic;
    const PValue p = pOfNormal(z, Alternative::twoSided);
    put(log10_p, 0, p.log10);
    return p.p;
}
