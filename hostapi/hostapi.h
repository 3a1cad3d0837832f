// Everything of the host's effect interface that this effect and the stand-in host use.
#pragma once

#include "hostapi/callbacks.h"
#include "hostapi/commands.h"
#include "hostapi/numbers.h"
#include "hostapi/parameters.h"
#include "hostapi/records.h"
#include "hostapi/scalars.h"
#include "hostapi/suites.h"
