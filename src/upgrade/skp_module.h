// The stored scene record: the one object that owns the render options and knows, for each of
// the six historic layouts, which top-level objects follow one another in the record.
#pragma once

#include <cstdint>

#include "archive/quick_archive.h"
#include "archive/serializable.h"
#include "options/all_options.h"

class SkpModule : public CorvaneCore::CorvaneSerializable {
public:
    static constexpr uint32_t kUpgradedMajor = 6;

    // Made on first use and never destroyed.
    static SkpModule& instance();

    // The record is never written back in this form: false, and nothing is written.
    bool serialize(CorvaneCore::QuickArchive& archive) override;
    // True when the record was read in full. The options return to their defaults before any
    // test, so a refused record leaves defaults (or what was read before the failure); records
    // older than the upgraded layout go on to offer the material upgrade.
    bool deserialize(CorvaneCore::QuickArchive& archive) override;

    CorvaneCore::AllOptions options;

private:
    SkpModule() = default;
    // The shared default sun reads itself but keeps its own id and name.
    bool readDefaultSun(CorvaneCore::QuickArchive& archive);
    // The sky of the major 4 layout is read to move past it; its content is dropped.
    bool skipSky(CorvaneCore::QuickArchive& archive);
};
