#pragma once

#include <string>

#include "hostapi/hostapi.h"

namespace standin {

// What a host claims to be and which services it has: everything by which hosts differ for the
// effect is a field here. A plain value, fixed while the host lives.
struct HostOffer {
    A_long applId = kAppID_FXTC;
    PF_SpecVersion version{13, 29};
    bool renderEngine = false;  // runs without a user interface

    bool basicSuite = true;  // off: pica_basicP is null
    bool handleSuite = true;
    bool worldSuite1 = true;
    bool worldSuite2 = true;
    bool fillMatteSuite = true;
    bool worldTransformSuite = true;
    bool paramUtilsSuite = true;
    bool appSuite = true;

    // How worlds lie in memory. Guards stand before and behind the pixels and are checked; without
    // them an address sanitiser sees the first byte too many instead.
    int rowPadding = 0;        // bytes behind each row
    int guardBytes = 64;       // a multiple of 16
    bool shiftPixels = false;  // start of the pixels at 4 past a multiple of 16

    // The output lies under junk before a render; after it guards, padding and the input's pixels
    // are looked at, and pixels that were never written counted. Off for a program that renders
    // and takes the effect's word, as the real host does.
    bool watchPixels = true;

    // Handle memory moves when its last lock goes, so that no address is kept past it.
    bool moveUnlockedHandles = false;

    // Where an instance's sequence data is handed over and taken back.
    enum class SequencePlace { both, inData, outData };
    SequencePlace sequencePlace = SequencePlace::both;
    // The flat handle is disposed of once a resetup has put another in its place; else it stays
    // the host's until the instance goes.
    bool disposesFlat = true;
    // Before a change is told, the instance is flattened and set up again.
    bool resetsUpBeforeChange = false;
    // The first word of a definition, which takes the change flags, is not 0 at the start.
    bool dirtyChangeWords = false;
    // Calls the effect again, on the same thread, from within each of its calls.
    bool callsBack = false;
    // How the module's path is answered.
    enum class PathAnswer { told, toldBesideCode, nothing, foreignBytes };
    PathAnswer pathAnswer = PathAnswer::told;

    // Path of the module as the host tells it; empty: the file that was loaded.
    std::string modulePath;
    // The host's main window; null: the stand-in's dialog record.
    void* mainWindow = nullptr;

    // A host so old that it has neither the newer world suite nor the settings file's rules.
    static HostOffer old() {
        HostOffer offer;
        offer.version = {12, 11};
        offer.worldSuite2 = false;
        return offer;
    }
};

}  // namespace standin
