// The attribute form of an archive: a Ruby array with one integer per byte.
#pragma once

#include <ruby.h>

#include "archive/quick_archive.h"
#include "bridge/ruby_value.h"

// False for anything but an Array (exactly, no subclass) or for an empty one. Each element
// keeps its low 8 bits. A non-numeric element raises through the pending-exception path.
bool RubyArrayToArchive(VALUE value, CorvaneCore::QuickArchive& archive);

// Whole blocks from readPos on, as a new array. False for an archive without blocks.
bool ArchiveToRubyArray(CorvaneCore::QuickArchive& archive, VALUE& out);
bool ArchiveToRubyArray(CorvaneCore::QuickArchive& archive, RubyValueHolder& out);
