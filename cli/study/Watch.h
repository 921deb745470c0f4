#pragma once

#include "cli/study/Remarks.h"
#include "vexrocproc/analysis.h"

#include <functional>
#include <string>

namespace vexroc {

/// What a run tells and asks; each may be empty.
struct Watch {
    std::function<void(double share, int records)> progress = {}; ///< share of the work, in [0, 1]
    std::function<bool()> cancelRequested;
    vexroc_parallel parallel = nullptr; ///< runs the pieces of a bootstrap
    Remarks* remarks = nullptr;         ///< get what there is to say beside the numbers
    std::string prefix = {};            ///< of their subjects

    // Callbacks for the library, whose `user` is a pointer to a watch that has what they call.
    static void tellProgress(double share, int records, void* watch)
    {
        static_cast<const Watch*>(watch)->progress(share, records);
    }
    static int askCancel(void* watch) { return static_cast<const Watch*>(watch)->cancelRequested() ? 1 : 0; }
    /// The pointer that they take.
    [[nodiscard]] void* asUser() const { return const_cast<Watch*>(this); }
};

} // namespace vexroc
