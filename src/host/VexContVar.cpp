#include "host/VexContVar.h"

#include <stdexcept>
#include <utility>

namespace VexXML_920 {

VexContVar::VexContVar(std::string name, double min, double max) : name_(std::move(name)), min_(min), max_(max)
{
    if (!(min <= max)) // also true when one is NaN
        throw std::invalid_argument("VexContVar: variable \"" + name_ + "\" has a minimum of " + std::to_string(min)
                                    + " and a maximum of " + std::to_string(max)
                                    + "; give an ascending range, or none when it is not known");
}

int VexContVar::GetVarType() const { return continuous; }

std::string VexContVar::GetName() const { return name_; }

int VexContVar::GetValueType() const { return plainValues; }

const VexValueLabels* VexContVar::GetValueLabels() const { return nullptr; }

} // namespace VexXML_920
