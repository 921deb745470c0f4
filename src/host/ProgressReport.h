#pragma once

#include <string>

namespace VexCommon_920 {

/// What a listener may ask about a running analysis, by the name of the measure.
class [[gnu::visibility("default")]] ProgressReport
{
public:
    virtual ~ProgressReport();

    /// A counted measure: "records" is the number of records read so far. -1 for an unknown name.
    [[nodiscard]] virtual int DiscreteMeasure(const std::string& name) = 0;
    /// A scaled measure: "percentage" is the share of the work done, in [0, 1]. Missing for an unknown name.
    [[nodiscard]] virtual double ScaleMeasure(const std::string& name) = 0;
};

} // namespace VexCommon_920
