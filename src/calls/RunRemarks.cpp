#include "calls/RunRemarks.h"

#include "calls/guard.h"
#include "host/VexMV.h"
#include "remarks/areaRules.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace ROCALG_920::calls {

using VexCommon_920::VexMV;

namespace {

std::string subjectOf(const AnalysisRequest& request, const vexroc_record& record)
{
    std::string subject = request.nameOf(record.test);
    if (record.group < 0)
        return subject;
    constexpr const char* signs[] = {" = ", " >= ", " < "}; // by operation
    return subject + " where " + request.nameOf(record.group) + signs[record.group_operation]
        + request.valueInWords(record.group, record.group_value);
}

/// Without area and interval: nothing is said of these.
vexroc_area_facts casesOf(long long positive, long long negative)
{
    vexroc_area_facts facts{};
    facts.struct_size = sizeof facts;
    facts.positive = positive;
    facts.negative = negative;
    facts.area = facts.std_error = facts.lower = facts.upper = facts.p_value = VexMV::Missing();
    return facts;
}

vexroc_area_facts factsOf(const vexroc_record& record, double level)
{
    vexroc_area_facts facts = casesOf(record.positive, record.negative);
    facts.area = record.area;
    facts.std_error = record.std_error;
    facts.lower = record.ci_lower;
    facts.upper = record.ci_upper;
    facts.smaller_is_positive = record.smaller_is_positive;
    facts.distinct_values = record.distinct_values;
    facts.ties = record.ties;
    facts.interval = record.interval_rule;
    facts.p_method = record.p_method;
    facts.alternative = record.alternative;
    facts.p_value = record.p_value;
    facts.level = level;
    facts.null_area = record.null_area;
    facts.edge = record.edge;
    facts.percentile = record.percentile;
    facts.held = record.held;
    return facts;
}

/// Of a test among the cases of a pair: without its area where the record says as much of that as there is to say.
vexroc_area_facts pairedFacts(const vexroc_record& record, const vexroc_comparison& pair, double area, double stdError)
{
    vexroc_area_facts facts = casesOf(pair.positive, pair.negative);
    facts.smaller_is_positive = record.smaller_is_positive;
    if (std::isnan(stdError) || (stdError == 0.0 && record.std_error != 0.0)) { // exact
        facts.area = area;
        facts.std_error = stdError;
    }
    return facts;
}

template <class Cases>
long long fewerOf(const Cases& cases)
{
    return std::min<long long>(cases.positive, cases.negative);
}

std::string fourDigits(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.4f", value);
    return text;
}

/// Share of the positive cases, or of their weights where these are probabilities.
double prevalenceOf(const vexroc_record& record, bool isWeighted)
{
    const double positive = isWeighted ? record.weighted_positive : record.positive;
    return positive / (positive + (isWeighted ? record.weighted_negative : record.negative));
}

std::string ofRows(long long count) { return std::to_string(count) + (count == 1 ? " row" : " rows"); }

} // namespace

RunRemarks::RunRemarks(const AnalysisRequest& request, const RowTally& rows)
{
    if (rows.moreThanTwoStates && !request.listsNegatives())
        addColumn("more-than-two-states", request.nameOf(request.state()));
    addWeights(request, rows.rows);
    addLeftOut(request, rows);
    if (request.isPaired())
        addCostlyTest(request, rows);
}

void RunRemarks::addWeights(const AnalysisRequest& request, const vexroc_rows& rows)
{
    if (request.weight() == AnalysisRequest::none || request.hasProbabilities())
        return;
    if (request.weightKind() == WeightKind::unsaid)
        addColumn("weight-counts-only", request.nameOf(request.weight()));
    if (rows.rounded_used > 0)
        add("weights-rounded", "", ofRows(rows.rounded_used));
    if (rows.unusable_weight > 0)
        add("weights-dropped", "", ofRows(rows.unusable_weight));
}

void RunRemarks::addLeftOut(const AnalysisRequest& request, const RowTally& tally)
{
    const vexroc_rows& rows = tally.rows;
    const std::pair<const char*, long long> reasons[] = {
        {"missing count", rows.missing_count},
        {"missing state", rows.missing_state},
        {"another state", rows.other_state},
        {"missing group", rows.missing_group},
        {"missing weight", rows.missing_weight},
        {"in neither group", rows.other_group},
        {request.hasProbabilities() ? "weight 0" : "unusable weight", rows.unusable_weight},
        {"missing test", rows.incomplete}};
    long long leftOut = 0;
    std::string detail;
    for (const auto& [reason, count] : reasons) {
        leftOut += count;
        if (count > 0)
            detail += (detail.empty() ? ": " : ", ") + std::string(reason) + ' ' + std::to_string(count);
    }
    if (leftOut > 0)
        add("left-out", "", std::to_string(leftOut) + " of " + std::to_string(rows.read) + detail);
    if (request.rowRule().needsAllTests) // then missing tests are among the reasons
        return;
    for (const RowTally::UnknownTest& gap : tally.gaps)
        if (gap.rows() > 0)
            add("left-out", request.nameOf(gap.column),
                std::to_string(leftOut + gap.rows()) + " of " + std::to_string(rows.read));
}

void RunRemarks::addCostlyTest(const AnalysisRequest& request, const RowTally& rows)
{
    const auto costly = std::ranges::max_element(rows.gaps, {}, &RowTally::UnknownTest::rows);
    if (costly != rows.gaps.end() && costly->rows() > 0)
        add("costly-test", request.nameOf(costly->column),
            "missing in " + std::to_string(costly->rows()) + " of " + ofRows(rows.usable()));
}

void RunRemarks::addRecord(const AnalysisRequest& request, const vexroc_record& record)
{
    const std::string subject = subjectOf(request, record);
    areas_.push_back({subject, request.nameOf(record.test), factsOf(record, request.options().getConfidienceLevel())});
    if (record.distribution_changed != 0 && record.positive != record.negative)
        add("distribution-changed", subject,
            std::to_string(record.positive) + " and " + std::to_string(record.negative));
    if (record.positive == 0 || record.negative == 0)
        return;
    constexpr int leastCurveCases = 3;
    if (request.options().needROC() && record.positive + record.negative < leastCurveCases)
        add("no-curve", subject);
    if (request.options().needPR())
        add("sample-prevalence", subject, fourDigits(prevalenceOf(record, request.hasProbabilities())));
}

void RunRemarks::addComparison(const AnalysisRequest& request, const std::vector<vexroc_record>& records,
                               const vexroc_comparison& comparison)
{
    const vexroc_record& first = records[static_cast<std::size_t>(comparison.first)];
    const vexroc_record& second = records[static_cast<std::size_t>(comparison.second)];
    std::string subject = request.nameOf(first.test);
    const auto isSaid = [](const vexroc_record& record) { return remarks::needsMoreCases(factsOf(record, 0.0)); };
    if (request.isPaired()) {
        subject += " and " + request.nameOf(second.test);
        const bool fewerCases = fewerOf(comparison) < std::min(fewerOf(first), fewerOf(second));
        const auto addArea = [&](const vexroc_record& record, double area, double stdError) {
            const vexroc_area_facts facts = pairedFacts(record, comparison, area, stdError);
            if (fewerCases || !std::isnan(facts.area) || (remarks::needsMoreCases(facts) && !isSaid(record)))
                areas_.push_back({subject, request.nameOf(record.test), facts});
        };
        addArea(first, comparison.first_area, comparison.first_std_error);
        addArea(second, comparison.second_area, comparison.second_std_error);
    } else {
        for (const vexroc_record* const record : {&first, &second})
            areas_.push_back({subjectOf(request, *record), request.nameOf(record->test),
                              casesOf(record->positive, record->negative)});
    }
    differences_.push_back({std::move(subject), comparison.difference, comparison.std_error});
}

void RunRemarks::add(const char* code, std::string subject, std::string detail)
{
    plain_.push_back({code, std::move(subject), std::move(detail)});
}

void RunRemarks::sayTo(remarks::RemarkList& list, std::string_view prefix) const
{
    // What is about the whole is about what the prefix names: "site = A: " becomes "site = A".
    const std::string_view whole = prefix.substr(0, prefix.find_last_not_of(": ") + 1);
    const auto subject = [&](const std::string& name) {
        return name.empty() ? std::string(whole) : std::string(prefix) + name;
    };
    for (const auto& [code, name, detail, ofTable] : plain_)
        list.add(*remarks::kindOf(code), {.subject = ofTable ? name : subject(name), .detail = detail});
    for (const auto& [name, test, facts] : areas_) {
        vexroc_area_facts known = facts;
        known.test = test.c_str();
        remarks::addAreaRemarks(subject(name), known, list);
    }
    for (const auto& [name, difference, stdError] : differences_)
        remarks::addDifferenceRemarks(subject(name), difference, stdError, list);
    remarks::addComparisonRemarks(whole, static_cast<long long>(differences_.size()), list);
}

} // namespace ROCALG_920::calls
