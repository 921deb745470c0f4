#pragma once

#include "cli/input/ByteSource.h"

#include <iosfwd>
#include <memory>
#include <string>

namespace vexroc {

/// The named file, or standardInput for "-". Throws an input error for a file that cannot be opened.
std::unique_ptr<ByteSource> openSource(const std::string& file, std::istream& standardInput);

} // namespace vexroc
