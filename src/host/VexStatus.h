#pragma once

namespace VexCommon_920 {

/// Outcome of an operation: success (code 0), a warning or an error. A plain value.
class [[gnu::visibility("default")]] VexStatus
{
public:
    /// Success.
    constexpr VexStatus() noexcept = default;
    constexpr VexStatus(long code, bool warning) noexcept : code_(code), warning_(warning) {}

    [[nodiscard]] constexpr long GetErrorCode() const noexcept { return code_; }
    /// True for success and for warnings: the operation did its work.
    [[nodiscard]] constexpr bool IsOK() const noexcept { return code_ == 0 || warning_; }
    /// True for errors only.
    [[nodiscard]] constexpr bool IsError() const noexcept { return !IsOK(); }

    friend constexpr bool operator==(const VexStatus&, const VexStatus&) noexcept = default;

private:
    long code_ = 0;
    bool warning_ = false;
};

} // namespace VexCommon_920
