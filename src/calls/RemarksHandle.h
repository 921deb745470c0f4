#pragma once

#include "remarks/RemarkList.h"

#include <string>
#include <vector>

/// What the opaque list of remarks.h points at.
struct vexroc_remarks {
    ROCALG_920::remarks::RemarkList list;
    std::vector<std::string> handedOut = {}; ///< by index; empty when the list has changed
};
