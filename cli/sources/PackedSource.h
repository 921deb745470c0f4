#pragma once

#include "cli/input/ByteSource.h"

#include <memory>

namespace vexroc {

/// The source itself, or what is packed in it when its first bytes are those of gzip, zstd, xz or bzip2, whatever its
/// name ends with. Members, frames or streams that follow each other are read as one text; zero bytes behind them, as
/// tapes have, do not count.
/// Failure: throws, now or from read, an input error that names the source, for damaged data, for data that end too
/// early or are followed by others, and where the library that unpacks them is not installed.
std::unique_ptr<ByteSource> unpacked(std::unique_ptr<ByteSource> source);

} // namespace vexroc
