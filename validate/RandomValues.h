#pragma once

#include <string>

#include "host/Instance.h"
#include "validate/Random.h"

namespace validate {

// How far random values go.
enum class Reach {
    inside,  // anywhere in the valid ranges, mostly where sliders are, often at an end
    past,    // also far past the ranges, and numbers that are none
};

// A value for each parameter of the instance; many stay at their defaults.
void storeRandomValues(standin::Instance& instance, Random& random, Reach reach);

// The values that are not at their defaults, as "Name=value", for reports.
std::string describeValues(const standin::Instance& instance, const standin::Host& host);

}  // namespace validate
