// Makes worlds, in the way of the host at hand.
#pragma once

#include "share/util/EffectWorldPtr.h"

namespace AEUtil {

class WorldSuite {
  public:
    // A world of that size and pixel format, cleared when `clear` is not 0, with one reference.
    //
    // An older host, which lacks the second world suite, makes "argb" and "ae16" worlds only;
    // for another format the handle comes back with a holder and no world. Without memory of the
    // host the handle is empty.
    //
    // Throws AEException with the host's code when the host cannot make the world, MissingSuite's
    // number when it has no world suite at all.
    static EffectWorldPtr newWorld(PF_ProgPtr effectRef, A_long width, A_long height, char clear,
                                   A_long pixelFormat);
};

}  // namespace AEUtil
