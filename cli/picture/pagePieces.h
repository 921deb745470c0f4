#pragma once

#include <string_view>

namespace vexroc {

/// The page around its contents: head, contents, data of the curves, script. Empty where the program was built without
/// npm.
struct PagePieces {
    std::string_view beforeContents;
    std::string_view beforeData;
    std::string_view afterData;
};
extern const PagePieces pagePieces;

} // namespace vexroc
