#pragma once

#include "host/ProgressListener.h"

#include <functional>

namespace VexCommon_920 {

/// A progress listener that calls a function.
/// Failure: an empty function throws std::invalid_argument at construction.
class [[gnu::visibility("default")]] FunctionListener final : public ProgressListener
{
public:
    explicit FunctionListener(std::function<void(ProgressReport&)> function);

    /// Always 0.
    int Notify(ProgressReport & report) override;

private:
    std::function<void(ProgressReport&)> function_;
};

} // namespace VexCommon_920
