#include "bridge/layered_material_bridge.h"

#include "bridge/wrapped_records.h"

bool materialRecordOf(VALUE value, BasicMaterialRecord& out) {
    const BasicMaterialRecord* record = materialOf(value);
    if (!record) return false;
    out = *record;
    return true;
}

bool materialToLayered(VALUE value, LayeredPair& out) {
    BasicMaterialRecord record;
    if (!materialRecordOf(value, record)) return false;
    out = materialToLayered(record);
    return true;
}
