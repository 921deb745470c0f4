#pragma once

#include "host/VexQueryCancel.h"

namespace VexMath_920 {

/// Holds the host's cancel query, if one is installed, and asks it. Does not own it.
class [[gnu::visibility("default")]] VexCancelInfo
{
public:
    explicit VexCancelInfo(VexCommon_920::VexQueryCancel * query) noexcept : query_(query) {}

    /// Installs or replaces the query; null removes it.
    void SetCancelPtr(VexCommon_920::VexQueryCancel * query) noexcept { query_ = query; }
    /// True when the host asks to stop; false without a query. Not const: asking may change the query.
    [[nodiscard]] bool IsCancel() { return query_ != nullptr && query_->IsCancelRequested(); }

private:
    VexCommon_920::VexQueryCancel* query_;
};

} // namespace VexMath_920
