#pragma once

#include "cli/options/Outline.h"

#include <string>

namespace vexroc {

/// The manual page vexroc(1) in the macros of man(7).
std::string manPageOf(const ProgramOutline& program, const std::string& version);

} // namespace vexroc
