#include "cli/report/pagePieces.h"

namespace vexroc {

const PagePieces pagePieces{};

} // namespace vexroc
