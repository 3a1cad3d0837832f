#pragma once

#include <vector>

#include "host/Faults.h"
#include "host/Image.h"

namespace validate {

// What the effect is doing while a call of the host fails.
enum class Scene {
    start,  // global setup and parameter setup
    about,
    sequenceSetup,
    flatten,
    resetup,
    panel,         // UPDATE_PARAMS_UI
    changed,       // USER_CHANGED_PARAM
    dialog,        // its first button is pressed
    dynamicFlags,  // QUERY_DYNAMIC_FLAGS
    frame,         // both commands of the smart road, or the one of the other
    stop,          // global setdown
};

const char* name(Scene scene);

struct Fault {
    Scene scene;
    standin::CallKind kind;
    long n = 1;      // the call that fails, of its kind in the scene
    long total = 1;  // calls of the kind when nothing fails
    PF_Err injected = 0;
    standin::Depth depth = standin::Depth::bits8;  // of a frame
};

// Codes with which the effect may answer.
std::vector<PF_Err> allowedCodes(const Fault& fault);

// Whether the host's own rules are broken by what it did itself: a float world that it said
// nothing about is taken for one of 8 bits.
bool hostIsToBlame(const Fault& fault);

// Calls that have an answer to fail with.
bool canFail(standin::CallKind kind);

}  // namespace validate
