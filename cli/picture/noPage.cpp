#include "cli/picture/pagePieces.h"

namespace vexroc {

const PagePieces pagePieces{};

} // namespace vexroc
