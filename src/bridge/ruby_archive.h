// The attribute form of an archive: a Ruby array with one integer per byte.
#pragma once

#include <ruby.h>

#include "archive/quick_archive.h"
#include "bridge/ruby_value.h"

// The array's bytes as a binary Ruby String, or nil: for anything but an Array (exactly, no
// subclass), for an empty one, and when an element's conversion raised or jumped (the entry
// call then has it). Each element keeps its low 8 bits. The bytes live in memory the garbage
// collector owns, so a call that never returns (a fiber abandoned inside an element's
// `to_int`) leaks nothing; call it before making any C++ object that owns memory.
VALUE RubyArrayToBytes(VALUE value);

// The same bytes written into `archive`; false where RubyArrayToBytes gives nil.
bool RubyArrayToArchive(VALUE value, CorvaneCore::QuickArchive& archive);

// Whole blocks from readPos on, as a new array. False for an archive without blocks.
bool ArchiveToRubyArray(CorvaneCore::QuickArchive& archive, VALUE& out);
bool ArchiveToRubyArray(CorvaneCore::QuickArchive& archive, RubyValueHolder& out);
