#pragma once

#include "archive/value_types.h"

// The product a × b: matrix a.m × b.m, offset a.m × b.offset + a.offset.
CorvaneCore::Transform multiplyTransforms(const CorvaneCore::Transform& a,
                                          const CorvaneCore::Transform& b);
