// Fixture for scripts/include-cycles: a includes b, b includes c, c includes a.
#pragma once

#include "b/two.h"
