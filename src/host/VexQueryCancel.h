#pragma once

namespace VexCommon_920 {

/// The host's answer to "shall the analysis stop?".
///
/// It is asked before every record, on the thread that runs the analysis, and must answer promptly. CancelFlag is
/// a ready-made one.
class [[gnu::visibility("default")]] VexQueryCancel
{
public:
    virtual ~VexQueryCancel();

    [[nodiscard]] virtual bool IsCancelRequested() = 0;
};

} // namespace VexCommon_920
