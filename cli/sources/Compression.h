#pragma once

#include "cli/input/ByteSource.h"

namespace vexroc {

/// The source itself, or what is packed in it when its first bytes are those of gzip or zstd, whatever its name ends
/// with. Members or frames that follow each other are read as one text.
/// Failure: read throws an input error that names the source, for damaged data and for data that end too early.
std::unique_ptr<ByteSource> decompressed(std::unique_ptr<ByteSource> source);

} // namespace vexroc
