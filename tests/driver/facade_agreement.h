#pragma once

#include "tests/support/hosts.h"

#include <string>

namespace roctest {

/// Runs an analysis and compares its records, comparisons and warnings with what the array calls say about the cases
/// that each stands for, picked out of the host's columns one by one. Says what differs first, and nothing when all
/// agrees.
[[nodiscard]] std::string facadeDisagreement(ROCALG_920::ROCSetting setting, HostData& data);

} // namespace roctest
