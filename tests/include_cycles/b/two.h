#pragma once

#include "c/three.h"
