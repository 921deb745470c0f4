#include "cli/commands/columnFindings.h"

#include "cli/commands/surveyedLabels.h"
#include "cli/input/likelyEncoding.h"
#include "cli/study/require.h"
#include "cli/words/Letters.h"
#include "cli/words/Lists.h"
#include "cli/words/Numbers.h"
#include "cli/words/Readable.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>

namespace vexroc {

namespace {

std::string inRows(std::size_t rows) { return " in " + std::to_string(rows) + (rows == 1 ? " row" : " rows"); }

bool isWhole(double number) { return number == std::floor(number) && std::abs(number) < 1e9; }

/// The digits that people make codes of: 9, 88, 999, and 97 or 998 beside 99 and 999.
bool looksLikeCode(double number)
{
    const std::string digits = wholeDigits(std::abs(number));
    const char last = digits.back();
    const bool repeats = digits.find_first_not_of(last) == std::string::npos;
    const bool beside = digits.size() > 1 && digits.find_first_not_of('9') == digits.size() - 1 && last >= '7';
    return (repeats && (last == '9' || last == '8' || (last == '7' && digits.size() > 1))) || beside;
}

/// Of the outermost numbers of one end those that stand far from the rest, whose other end is `otherEnd`.
std::vector<NumberInRows> farNumbers(const std::vector<NumberInRows>& outer, double otherEnd)
{
    for (std::size_t count = 2; count > 0; --count) {
        if (outer.size() <= count)
            continue;
        std::vector<NumberInRows> far(outer.begin(), outer.begin() + static_cast<std::ptrdiff_t>(count));
        const bool areRepeated =
            std::ranges::all_of(far, [](const NumberInRows& n) { return n.rows > 1 && isWhole(n.number); });
        const double rest = outer[count].number;
        const double range = std::abs(rest - otherEnd);
        const double gap = std::abs(far.back().number - rest);
        const bool areFar = std::ranges::all_of(far, [](const NumberInRows& n) { return looksLikeCode(n.number); })
            ? gap >= range
            : count == 1 && std::abs(far.front().number) >= 100.0 && gap > 3.0 * range;
        // Below numbers that are none of them negative, a code needs no distance.
        const bool isBelow =
            rest >= 0.0 && std::ranges::all_of(far, [&](const NumberInRows& n) {
                return n.number < 0.0 && (looksLikeCode(n.number) || (n.number == -1.0 && otherEnd >= 5.0));
            });
        if (areRepeated && range > 0.0 && (areFar || isBelow))
            return far;
    }
    return {};
}

constexpr std::array<std::string_view, 16> idWords{"id",     "ids",  "pid",         "uid",   "mrn",     "nr",
                                                   "no",     "num",  "number",      "patid", "patient", "subject",
                                                   "subjid", "case", "participant", "index"};

/// Numbers in some spelling hold none.
bool holdsLetter(std::string_view text)
{
    return std::ranges::any_of(text, [](char c) { return lowerLetter(c) >= 'a' && lowerLetter(c) <= 'z'; });
}

/// "P001": letters, then digits.
bool looksLikeId(std::string_view text)
{
    const std::size_t digits = text.find_first_of("0123456789");
    return digits != std::string_view::npos && digits > 0 && digits <= 6
        && text.find_first_not_of("0123456789", digits) == std::string_view::npos;
}

/// The parts of a name in small letters, split at signs and where a capital follows a small letter.
std::vector<std::string> partsOf(std::string_view name)
{
    std::vector<std::string> parts(1);
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = lowerLetter(name[i]);
        const bool isLetter = (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
        const bool begins = isLetter && c != name[i] && i > 0 && name[i - 1] == lowerLetter(name[i - 1]);
        if ((!isLetter || begins) && !parts.back().empty())
            parts.emplace_back();
        if (isLetter)
            parts.back() += c;
    }
    return parts;
}

std::string thousandsIn(const std::string& text, const NumberForm& form)
{
    if (form.thousands != Thousands::notSaid)
        return "";
    for (const auto sign : {Thousands::comma, Thousands::point, Thousands::blank, Thousands::apostrophe})
        if (const auto grouped = groupedNumber(text, sign);
            grouped && (parseNumber(grouped->plain, '.') || parseNumber(grouped->plain, ',')))
            return sign == Thousands::comma
                ? grouped->isDoubtful() ? "--thousands comma or --decimal comma" : "--thousands comma"
                : sign == Thousands::point ? "--thousands point"
                : sign == Thousands::blank ? "--thousands blank"
                                           : "--thousands apostrophe";
    return "";
}

/// What a text is that people write for a number: "thousands", a sign, a limit; empty for any other.
std::string nearlyNumberKind(const std::string& text, const NumberForm& form)
{
    if (std::string option = thousandsIn(text, form); !option.empty())
        return option;
    const auto isNumber = [&](std::string_view t) { return parseNumber(t, form).has_value(); };
    if (text.ends_with('%') && isNumber(std::string_view(text).substr(0, text.size() - 1)))
        return "per cent";
    const std::size_t number = text.find_first_not_of("<>= \xE2\x89\xA4\xA5");
    return number != std::string::npos && number > 0 && isNumber(std::string_view(text).substr(number)) ? "a limit"
                                                                                                        : "";
}

void addNearlyNumbers(const ColumnFacts& facts, const Input& input, Remarks& remarks)
{
    std::map<std::string, Word> kinds;
    for (const auto& [text, rows] : facts.texts().all()) {
        const std::string kind = nearlyNumberKind(text, input.form.numbers);
        if (kind.empty())
            continue;
        Word& example = kinds.try_emplace(kind, Word{text, 0}).first->second;
        example.text = std::min(example.text, text);
        example.rows += rows;
    }
    std::string detail;
    for (const auto& [kind, example] : kinds)
        detail += (detail.empty() ? "" : "; ") + inQuotes(example.text) + inRows(example.rows) + ": " + kind;
    if (!detail.empty())
        remarks.add("nearly-numbers", facts.name(), detail);
    else if (facts.hasOtherDecimals() && input.kind == Input::Kind::delimited)
        remarks.add("decimal-sign", facts.name(),
                    std::string("read with --decimal ") + (input.form.numbers.decimal == ',' ? "point" : "comma"));
}

/// What the library says of the column as labels: spellings, leading zeros, missing words.
void addLabelRemarks(const ColumnFacts& facts, const Input& input, Remarks& remarks)
{
    require(vexroc_labels_add_remarks(surveyedLabels(facts, input).get(), remarks.handle()));
}

void addMissingWords(const ColumnFacts& facts, Remarks& remarks)
{
    std::string detail;
    for (const auto& [text, rows] : facts.missingWords().all())
        detail += (detail.empty() ? "" : ", ") + inQuotes(text) + ": " + std::to_string(rows);
    if (!detail.empty())
        remarks.add("missing-words", facts.name(), detail);
}

} // namespace

bool saysAny(std::string_view name, std::span<const std::string_view> words)
{
    return std::ranges::any_of(partsOf(name),
                               [&](const std::string& part) { return std::ranges::find(words, part) != words.end(); });
}

std::vector<NumberInRows> likelyCodes(const ColumnFacts& facts)
{
    if (!facts.hasNumbers())
        return {};
    std::vector<NumberInRows> low = farNumbers(facts.lowest().numbers(), facts.highest().numbers().front().number);
    const auto& lowest = facts.lowest().numbers();
    const double lowestOther = lowest[std::min(low.size(), lowest.size() - 1)].number;
    std::vector<NumberInRows> high = farNumbers(facts.highest().numbers(), lowestOther);
    if (low.empty() && !high.empty() && facts.highest().numbers().size() > high.size()) // which may hide a low one
        low = farNumbers(lowest, facts.highest().numbers()[high.size()].number);
    if (!low.empty() && !high.empty() && low.front().number == high.back().number)
        return high;
    low.insert(low.end(), high.begin(), high.end());
    return low;
}

bool isId(const ColumnFacts& facts)
{
    constexpr std::size_t fewRows = 10;
    const bool hasNoName = parseNumber(facts.name()).has_value(); // but its place
    const bool isNamed =
        saysAny(facts.name(), idWords) || (hasNoName && facts.isAscending() && facts.smallest() <= 1.0);
    if (facts.hasMore())
        return !facts.hasNumbers() || (facts.hasWholeNumbersOnly() && isNamed);
    if (facts.distinct() != facts.known() || facts.known() < (isNamed ? 3 : fewRows))
        return false;
    if (!facts.hasNumbers())
        return std::ranges::all_of(facts.texts().all(), [](const auto& word) { return holdsLetter(word.first); });
    const bool isContiguous = facts.largest() - facts.smallest() + 1.0 == static_cast<double>(facts.known());
    return !facts.hasTexts() && facts.hasWholeNumbersOnly()
        && (isNamed || (isContiguous && (facts.isAscending() || facts.known() >= 2 * fewRows)));
}

bool isRepeatedId(const ColumnFacts& facts)
{
    const bool isMixed = facts.hasNumbers() == facts.hasTexts();
    const bool isEnough = facts.distinct() >= 5 && facts.distinct() * 20 >= facts.known();
    if (facts.hasMore() || isMixed || !isEnough || facts.distinct() == facts.known()
        || (facts.hasNumbers() && !facts.hasWholeNumbersOnly()))
        return false;
    if (saysAny(facts.name(), idWords))
        return true;
    if (facts.hasTexts())
        return std::ranges::all_of(facts.texts().all(), [](const auto& word) { return looksLikeId(word.first); });
    return facts.isAscending() && facts.smallest() == 1.0 && facts.distinct() >= 10
        && facts.largest() == static_cast<double>(facts.distinct());
}

void addFindings(const ColumnFacts& facts, const Input& input, Remarks& remarks)
{
    constexpr std::size_t mostLabels = 10'000;
    addNearlyNumbers(facts, input, remarks);
    if (facts.hasTexts() && !facts.hasMore() && facts.texts().size() <= mostLabels)
        addLabelRemarks(facts, input, remarks);
    else
        addMissingWords(facts, remarks);
    std::string codes;
    for (const auto& [number, rows] : likelyCodes(facts))
        codes += (codes.empty() ? "" : ", ") + wholeDigits(number) + inRows(rows);
    if (!codes.empty())
        remarks.add("likely-codes", facts.name(), codes);
    if (isId(facts))
        remarks.add("ids", facts.name());
    else if (isRepeatedId(facts))
        remarks.add("repeated-ids", facts.name(), std::to_string(facts.distinct()) + " values" + inRows(facts.known()));
    if (!facts.undecodable().empty())
        remarks.add("undecodable", facts.name(),
                    inQuotes(facts.undecodable()) + ", perhaps --encoding " + likelyEncoding(facts.undecodable()));
}

} // namespace vexroc
