#include "tests/support/agreement.h"

#include "host/VexMV.h"
#include "tests/support/oracle.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string_view>

namespace roctest {
namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();
constexpr double ulps = 3;
constexpr double unit = 0x1p-53;

/// Keeps the first difference.
class Findings {
public:
    void equal(const char* what, double got, double expected)
    {
        require(Exact{got} == Exact{expected}, what, {got}, {expected});
    }
    void near(const char* what, double got, long double expected, long double tolerance)
    {
        const bool isNear = std::abs(got - expected) <= tolerance;
        require(isNear || Exact{got} == Exact{static_cast<double>(expected)}, what, {got},
                {static_cast<double>(expected)});
    }
    void within(double limit, const char* what, double got, long double expected)
    {
        require(ulpsApart(got, expected) <= limit, what, {got}, {static_cast<double>(expected)});
    }
    void equalLists(const char* what, const Numbers& got, const Numbers& expected)
    {
        equal(what, double(got.size()), double(expected.size()));
        for (std::size_t i = 0; i < std::min(got.size(), expected.size()); ++i)
            require(got[i] == expected[i], what, got[i], expected[i]);
    }
    [[nodiscard]] std::string text() const { return text_; }

private:
    void require(bool agrees, const char* what, Exact got, Exact expected)
    {
        if (agrees || !text_.empty())
            return;
        std::ostringstream text;
        text << what << ": ";
        PrintTo(got, &text);
        text << " instead of ";
        PrintTo(expected, &text);
        text_ = text.str();
    }
    std::string text_;
};

/// Is the word the second one of its pair, whatever its case?
bool isSecond(const char* word, std::string_view second)
{
    const auto same = [](char a, char b) { return a == b || (a >= 'A' && a <= 'Z' && a + 32 == b); };
    return word != nullptr && std::ranges::equal(std::string_view(word), second, same);
}

bool isLargerPositive(const Words& words) { return !isSecond(words.larger, "smaller"); }

/// The cases that take part, with the states 1 and 0.
Sample accepted(const Sample& sample, const Words& words, bool paired)
{
    const double positive = words.positiveValue != nullptr ? *words.positiveValue : 1.0;
    Sample kept;
    for (std::size_t i = 0; i < sample.states.size(); ++i)
        if (!std::isnan(sample.values[i]) && !(paired && std::isnan(sample.others[i])))
            kept.add(sample.states[i] == positive ? 1.0 : 0.0, sample.values[i], sample.others[i]);
    return kept;
}

/// The two-sided critical value, by bisection. Near 1 a double level does not tell it well.
long double criticalValue(double level)
{
    long double low = 0;
    long double high = 40;
    for (int i = 0; i < 80; ++i)
        (twoSidedTail((low + high) / 2) > 1 - static_cast<long double>(level) ? low : high) = (low + high) / 2;
    return low;
}

void checkTest(Findings& found, double estimate, double z, double stdError, double significance, double lower,
               double upper, double level)
{
    found.near("significance", significance, twoSidedTail(z), 4 * unit);
    if (!(level > 0 && level < 1)) {
        found.equal("lower bound", lower, missing);
        return found.equal("upper bound", upper, missing);
    }
    if (level > 0.9999999)
        return;
    const long double critical = criticalValue(level);
    const long double density = std::exp(-critical * critical / 2) / 2.5L;
    const long double tolerance = unit * (4 + stdError * (8 + 2 / density));
    found.near("lower bound", lower, estimate - critical * stdError, tolerance);
    found.near("upper bound", upper, estimate + critical * stdError, tolerance);
}

void checkArea(Findings& found, const auc_res& got, const Placements& placed, bool larger, long double stdError,
               double level)
{
    found.equal("positive cases", got.posCount, static_cast<double>(placed.nPos()));
    found.equal("negative cases", got.negCount, static_cast<double>(placed.nNeg()));
    if (placed.nPos() == 0 || placed.nNeg() == 0) {
        for (const double value : {got.area, got.stdError, got.asymptoticSig, got.ciLower, got.ciUpper})
            found.equal("number of a single state", value, missing);
        return;
    }
    found.equal("area", got.area, area(placed, larger));
    found.within(ulps, "standard error", got.stdError, stdError);
    checkTest(found, got.area, (got.area - 0.5) / got.stdError, got.stdError, got.asymptoticSig, got.ciLower,
              got.ciUpper, level);
}

void checkDifference(Findings& found, const auc_comparison_res& got, long double stdError, double level)
{
    const Numbers all{{got.z}, {got.zSig}, {got.areaDiff}, {got.stdErrorDiff}, {got.ciLower}, {got.ciUpper}};
    if (got.first.posCount * got.first.negCount * got.second.posCount * got.second.negCount == 0)
        return found.equalLists("comparison with a single state", all, Numbers(6, {missing}));
    found.equal("difference", got.areaDiff, got.first.area - got.second.area);
    found.within(ulps, "standard error of the difference", got.stdErrorDiff, stdError);
    found.equal("z", got.z, got.areaDiff == 0 ? 0.0 : got.areaDiff / got.stdErrorDiff);
    checkTest(found, got.areaDiff, got.z, got.stdErrorDiff, got.zSig, got.ciLower, got.ciUpper, level);
}

void checkPaired(Findings& found, const Sample& sample, const Words& words, double level)
{
    const Sample cases = accepted(sample, words, true);
    const Placements first = placements(cases.states, cases.values);
    const Placements second = placements(cases.states, cases.others);
    const auc_comparison_res got = pairedOf(sample, words, level);
    checkArea(found, got.first, first, isLargerPositive(words), std::sqrt(covariance(first, first)), level);
    checkArea(found, got.second, second, isLargerPositive(words), std::sqrt(covariance(second, second)), level);
    checkDifference(found, got, stdErrorOfDifference(first, second), level);
}

} // namespace

std::string curveDisagreement(const Sample& sample, const Words& words)
{
    const Sample cases = accepted(sample, words, false);
    const auto nPos = std::ranges::count(cases.states, 1.0);
    Numbers roc;
    Numbers pr;
    if (cases.size() >= 3 && nPos > 0 && nPos < cases.size()) {
        const bool larger = isLargerPositive(words);
        const CurveTruth truth = curveTruth(cases, {!isSecond(words.include, "exclude"), larger});
        roc = rocRows(truth);
        pr = prRows(truth, larger, !isSecond(words.interpolation, "keilwagen"));
    }
    Findings found;
    found.equalLists("ROC curve", curve(sample.states, sample.values, words), roc);
    found.equalLists("precision-recall curve", precisionRecall(sample.states, sample.values, words), pr);
    return found.text();
}

std::string areaDisagreement(const Sample& sample, const Words& words, double level)
{
    const Sample cases = accepted(sample, words, false);
    const Placements placed = placements(cases.states, cases.values);
    const bool biNegative = isSecond(words.distribution, "bi-negative") && placed.nPos() == placed.nNeg();
    const long double stdError = biNegative ? biNegativeStdError(placed.nPos(), placed.nNeg(), placed.twiceOrdered)
                                            : nonparametricStdError(placed.nPos(), placed.nNeg(), placed.twiceOrdered,
                                                                    tripleSums(cases.states, cases.values));
    Findings found;
    checkArea(found, areaOf(sample.states, sample.values, words, level), placed, isLargerPositive(words), stdError,
              level);
    return found.text();
}

std::string comparisonDisagreement(const Sample& sample, const Words& words, double level)
{
    Findings found;
    checkPaired(found, sample, words, level);
    const auc_comparison_res independent = independentOf(sample, words, level);
    found.equalLists("first area", numbers(independent.first),
                     numbers(areaOf(sample.states, sample.values, words, level)));
    found.equalLists("second area", numbers(independent.second),
                     numbers(areaOf(sample.states, sample.others, words, level)));
    const long double first = independent.first.stdError;
    const long double second = independent.second.stdError;
    checkDifference(found, independent, std::sqrt(first * first + second * second), level);
    return found.text();
}

} // namespace roctest
