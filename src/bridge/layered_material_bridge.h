// Quillon::Material values as the upgrade pass's records and layered materials.
#pragma once

#include <ruby.h>

#include "upgrade/basic_material.h"

// The record of a Quillon::Material value; false for anything else.
bool materialRecordOf(VALUE value, BasicMaterialRecord& out);
// Front and back layered materials from a Quillon::Material value; false for anything else.
bool materialToLayered(VALUE value, LayeredPair& out);
