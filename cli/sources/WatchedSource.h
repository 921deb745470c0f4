#pragma once

#include "cli/input/ByteSource.h"
#include "cli/study/RowSink.h"
#include "cli/system/Progress.h"

namespace vexroc {

/// A source, and the progress of the rows that a sink takes from it, told whenever the reader comes for more.
class WatchedSource final : public ByteSource {
public:
    /// `source` and `sink` must live as long.
    WatchedSource(ByteSource& source, const ProgressDisplay& display, const RowSink& sink)
        : ByteSource(source.name()), source_(source), sink_(sink),
          progress_(display, [&source] { return source.shareRead(); })
    {
    }

    std::size_t read(std::span<char> block) override
    {
        progress_.tell(sink_.rows());
        return source_.read(block);
    }
    [[nodiscard]] std::optional<double> shareRead() const noexcept override { return source_.shareRead(); }

private:
    ByteSource& source_;
    const RowSink& sink_;
    ReadingProgress progress_;
};

} // namespace vexroc
