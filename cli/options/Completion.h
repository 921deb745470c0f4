#pragma once

#include "cli/options/Outline.h"

#include <string>
#include <vector>

namespace vexroc {

/// The shells that completionScript knows.
const std::vector<std::string>& completionShells();

/// A script that teaches a shell, one of completionShells(), to complete commands, options, words and file names.
std::string completionScript(const ProgramOutline& program, const std::string& shell);

} // namespace vexroc
