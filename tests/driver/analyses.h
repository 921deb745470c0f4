#pragma once

#include "tests/support/hosts.h"

#include <span>

/// Every kind of analysis, over the same columns.
namespace roctest {

/// What the columns of analysisData are.
enum Column { state, test1, test2, test3, group, code, weight, constant };

/// Cases with ties within and between the states; `code` is 0 or 1, `weight` 0 to 3, `group` 0 to 9.
[[nodiscard]] HostData analysisData(std::size_t size);

struct Analysis {
    const char* name;
    void (*configure)(ROCALG_920::ROCSetting& setting);
    int passes; ///< over the host's records
};
[[nodiscard]] std::span<const Analysis> analyses();
[[nodiscard]] ROCALG_920::ROCSetting settingOf(const Analysis& analysis);
/// Areas of these variables; the state is column 0.
[[nodiscard]] ROCALG_920::ROCSetting areasOf(const std::vector<int>& testVars);

} // namespace roctest
