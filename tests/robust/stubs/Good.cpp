// Keeps all rules: what must pass where the others fail.
#include "GoodEffect.h"

STUB_MODULE(GoodEffect)
