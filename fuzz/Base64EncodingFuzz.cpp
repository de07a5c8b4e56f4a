#include "Base64Rules.h"
#include "Fuzz.h"

FUZZ_TARGET(FaultInEncoding)
