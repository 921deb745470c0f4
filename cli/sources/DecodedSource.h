#pragma once

#include "cli/input/ByteSource.h"

#include <memory>
#include <string>

namespace vexroc {

/// Text as UTF-8, whatever it is in: what a mark in front says (UTF-16, UTF-32, UTF-8), else the named encoding; the
/// source itself where that is empty or UTF-8. A byte that the encoding does not know becomes 0xFF, which is no UTF-8.
std::unique_ptr<ByteSource> decoded(std::unique_ptr<ByteSource> source, const std::string& encoding);

/// Is it a name that iconv knows? One with a slash, which may ask for bytes to be dropped, is not.
bool isEncoding(const std::string& name);

} // namespace vexroc
