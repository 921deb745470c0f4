// host_of_the_library LIBRARY [OTHER...]: loads the others for all to see, then the library, and asks it for areas that
// are known. It looks the calls up in the library, as a host that has functions of the same names must.

#include "vexrocproc/analysis.h"
#include "vexrocproc/arraycalls.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr double states[] = {1, 1, 1, 0, 0, 0};
constexpr double values[] = {6, 5, 2, 4, 3, 1}; // 7 of 9 pairs are in the right order
constexpr double others[] = {5, 6, 4, 3, 2, 1}; // all are
constexpr double positive = 1;
constexpr double area = 7.0 / 9;

void check(bool right, const char* what)
{
    if (right)
        return;
    std::fprintf(stderr, "wrong: %s\n", what);
    std::exit(1);
}

void* load(const char* path, int mode)
{
    void* const library = dlopen(path, mode);
    check(library, path);
    return library;
}

template <class Function>
Function* find(void* library, const char* name)
{
    auto* const function = reinterpret_cast<Function*>(dlsym(library, name));
    check(function, name);
    return function;
}

void checkArrayCalls(void* library)
{
    const auto one = find<decltype(auc)>(library, "auc");
    const auto apart = find<decltype(auc_indpendentcomparison)>(library, "auc_indpendentcomparison");
    const auto paired = find<decltype(auc_pairedcomparison)>(library, "auc_pairedcomparison");
    const auto roc = find<decltype(roccurve)>(library, "roccurve");
    const auto pr = find<decltype(prcurve)>(library, "prcurve");
    check(one(states, values, 6, &positive, "include", "LARGER", "nonparam", 0.95).area == area, "area");
    check(one(states, values, 6, &positive, "include", "smaller", "nonparam", 0.95).area == 1 - area, "smaller");
    check(paired(states, values, others, 6, &positive, "include", "larger", 0.95).areaDiff == area - 1, "paired");
    check(apart(states, values, 6, states, others, 6, &positive, "include", "larger", "nonparam", 0.95).areaDiff
              == area - 1,
          "independent");
    const auto rows = roc(states, values, 6, &positive, "include", "larger");
    const auto points = pr(states, values, 6, &positive, "include", "larger", "keilwagen");
    check(rows.count == 7 && points.count >= 7, "curves");
    find<decltype(release_roccurve_res)>(library, "release_roccurve_res")(rows);
    find<decltype(release_prcurve_res)>(library, "release_prcurve_res")(points);
}

void checkAnalysis(void* library)
{
    vexroc_analysis* analysis = nullptr;
    check(find<decltype(vexroc_analysis_new)>(library, "vexroc_analysis_new")(&analysis) == VEXROC_OK, "new");
    const char* const parts[] = {"state", "test", "test"};
    const double* const columns[] = {states, values, others};
    for (int i = 0; i < 3; ++i) {
        find<decltype(vexroc_analysis_add_column)>(library, "vexroc_analysis_add_column")(analysis, parts[i],
                                                                                          columns[i], 6, nullptr);
        find<decltype(vexroc_analysis_set_column)>(library, "vexroc_analysis_set_column")(analysis, parts[i], i);
    }
    find<decltype(vexroc_analysis_set_word)>(library, "vexroc_analysis_set_word")(analysis, "comparison", "paired");
    check(find<decltype(vexroc_analysis_run)>(library, "vexroc_analysis_run")(analysis) == VEXROC_OK, "run");
    vexroc_comparison pair{};
    pair.struct_size = sizeof pair;
    find<decltype(vexroc_analysis_comparison)>(library, "vexroc_analysis_comparison")(analysis, 0, &pair);
    check(pair.difference == area - 1, "analysis");
    vexroc_remarks* remarks = nullptr;
    check(find<decltype(vexroc_remarks_new)>(library, "vexroc_remarks_new")(VEXROC_VOICE_C, &remarks) == VEXROC_OK,
          "remarks");
    find<decltype(vexroc_analysis_add_remarks)>(library, "vexroc_analysis_add_remarks")(analysis, remarks, nullptr);
    check(find<decltype(vexroc_remarks_count)>(library, "vexroc_remarks_count")(remarks) > 0,
          "remarks of the analysis");
    find<decltype(vexroc_remarks_free)>(library, "vexroc_remarks_free")(remarks);
    find<decltype(vexroc_analysis_free)>(library, "vexroc_analysis_free")(analysis);
}

} // namespace

int main(int count, char** arguments)
{
    check(count > 1, "usage: host_of_the_library LIBRARY [OTHER...]");
    for (int i = 2; i < count; ++i)
        load(arguments[i], RTLD_NOW | RTLD_GLOBAL);
    void* const library = load(arguments[1], RTLD_NOW);
    checkArrayCalls(library);
    checkAnalysis(library);
    return 0;
}
