#pragma once

#include "hostapi/hostapi.h"

namespace standin {

class Services;

// The function tables of one host.
struct SuiteTables {
    SPBasicSuite basic;
    PF_UtilCallbacks utils;
    PF_HandleSuite1 handle;
    PF_WorldSuite1 world1;
    PF_WorldSuite2 world2;
    PF_FillMatteSuite2 fillMatte;
    PF_WorldTransformSuite1 worldTransform;
    PF_ParamUtilsSuite1 paramUtils;
    PFAppSuite4 app;
};

// Half of the host's functions are not told whom they serve: a handle's, a suite's. So that each
// host has its own, there is one set of them a slot, and a host takes a slot for its life.
namespace suiteSlots {

// The slot taken, or -1 when all are; its tables.
int take(Services& services, SuiteTables& tables);
void leave(int slot);

}  // namespace suiteSlots

// The functions that are told, by their effect_ref (WorldCallbacks.cpp). The same for all hosts.
void addWorldCallbacks(SuiteTables& tables);
// Likewise of the running command (CommandCallbacks.cpp).
void addCommandCallbacks(SuiteTables& tables);
PF_InteractCallbacks interactCallbacks();

}  // namespace standin
