#include "../../tests/reference/PlainStroke.h"
namespace streakfall {
template <class Depth>
void traceLine(Stroke<Depth>& s, LineCanvas& c, const LineRecord& l) {
    reference::traceLine<Depth>(s, c, l);
}
template void traceLine<Depth8>(Stroke<Depth8>&, LineCanvas&, const LineRecord&);
template void traceLine<Depth16>(Stroke<Depth16>&, LineCanvas&, const LineRecord&);
template void traceLine<DepthFloat>(Stroke<DepthFloat>&, LineCanvas&, const LineRecord&);
}  // namespace streakfall
