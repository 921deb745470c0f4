#include "host/FunctionListener.h"

#include <stdexcept>
#include <utility>

namespace VexCommon_920 {

FunctionListener::FunctionListener(std::function<void(ProgressReport&)> function) : function_(std::move(function))
{
    if (!function_)
        throw std::invalid_argument("FunctionListener: the function is empty; leave out the listener instead");
}

int FunctionListener::Notify(ProgressReport& report)
{
    function_(report);
    return 0;
}

} // namespace VexCommon_920
