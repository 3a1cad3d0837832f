// The parameter objects of the process, made from the rows, and how they get to the host.
//
// The table is built at first-call initialisation and lives until shutdown. In between nothing in
// it changes, so any thread may read it; building and destroying happen with no other command
// running.
#pragma once

#include <array>

#include "params/BaseParam.h"
#include "params/ParamRows.h"

namespace streakfall {

// The object of each id, or null; owns the objects.
extern std::array<BaseParam*, kParamIdLimit> paramRegistry;

// The object of each host index; owns nothing. Element 0, the effect's input layer, is null, and
// so is everything behind the last parameter, which ends a walk.
extern std::array<BaseParam*, kParamIdLimit + 1> paramsByIndex;

// The host index that the next object takes. Building does not reset it, destroying puts it back
// to 1.
extern std::int32_t paramCounter;

// Makes the objects. `inData` tells whether the host is a render engine, on which every parameter
// starts disabled. Throws what the allocator throws; then there is no table.
void buildParamTable(const PF_InData* inData);

void destroyParamTable();

// 0, which is the input layer, for an id without a parameter.
PF_ParamIndex hostIndexOf(std::int32_t paramId);

// PF_Cmd_PARAMS_SETUP. Adds the parameters in order, with starting values from the settings file.
// Returns the host's first error, at which the adding ends.
[[nodiscard]] PF_Err paramsSetup(const PF_InData* inData, PF_OutData* outData);

}  // namespace streakfall
