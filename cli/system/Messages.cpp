#include "cli/system/Messages.h"

#include <ostream>

namespace vexroc {

void Messages::say(std::string_view kind, std::string_view sgr, std::string_view text) const
{
    err_ << "vexroc: ";
    if (colour_)
        err_ << "\x1b[" << sgr << 'm' << kind << ":\x1b[0m ";
    else
        err_ << kind << ": ";
    err_ << text << '\n';
}

} // namespace vexroc
