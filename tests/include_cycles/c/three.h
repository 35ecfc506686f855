#pragma once

#include <string>

#include "a/one.h"
#include "c/three_more.h"
