// The bounds that keep one record's cost in proportion to its size. Records come from files
// anyone can send, so both what a read builds and what a conversion writes are capped.
#pragma once

#include <cstddef>

namespace CorvaneCore {

// Deepest chain of nested child objects a record may hold. Real scenes stay far below it; a
// deeper record is refused instead of exhausting the stack.
constexpr int kMaxNestingDepth = 64;

// Largest XML document a conversion gives, in UTF-8 bytes. A small record can still ask for a
// huge document (a long name repeated in the URL of every layer), so the writer stops once its
// text passes this and the conversion is refused. Real documents stay far below it (the
// default options are 54 KB).
constexpr size_t kMaxDocumentBytes = size_t(64) << 20;

}  // namespace CorvaneCore
