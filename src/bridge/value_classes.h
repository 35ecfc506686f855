// Quillon::Vector, Quillon::Color, Quillon::Transform and Quillon::Material: Ruby objects that
// wrap native records. RegisterHostClasses defines them under Quillon, one file per class.
#pragma once

#include <ruby.h>

void defineVector(VALUE under);
void defineColor(VALUE under);
void defineTransform(VALUE under);
void defineMaterial(VALUE under);
