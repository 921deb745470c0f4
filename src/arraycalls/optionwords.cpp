#include "vexrocproc/optionwords.h"

#include "arraycalls/arrayInput.h"

#include <algorithm>
#include <utility>

namespace {

/// First word of a pair unless the second is given.
bool isFirstOf(const char* word, const char* first, const char* second)
{
    if (word == nullptr || compareIgnoreCase(word, first))
        return true;
    return !compareIgnoreCase(word, second);
}

} // namespace

bool yTrue(double state, const double* positiveValue)
{
    return state == ROCALG_920::arraycalls::positiveState(positiveValue);
}

std::string lower(std::string s)
{
    std::ranges::transform(s, s.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return s;
}

bool compareIgnoreCase(std::string a, std::string b) { return lower(std::move(a)) == lower(std::move(b)); }

bool isLarger(const char* word) { return isFirstOf(word, "larger", "smaller"); }

bool isInclude(const char* word) { return isFirstOf(word, "include", "exclude"); }

bool isTP(const char* word) { return isFirstOf(word, "davis-goadrich", "keilwagen"); }

bool isNonParamDist(const char* word) { return isFirstOf(word, "nonparam", "bi-negative"); }
