// Method ids of the host's Ruby API, interned once at load in this fixed order.
#pragma once

#include <ruby.h>

enum HostMethod {
    kDeletedP,
    kLayer,
    kHiddenP,
    kVisibleP,
    kEntities,
    kCount,
    kLength,
    kIndex,
    kIndexSet,
    kDefinition,
    kEntityID,
    kMaterialSet,
    kMaterial,
    kMaterials,
    kBackMaterialSet,
    kBackMaterial,
    kVertices,
    kNormal,
    kWrite,
    kLoad,
    kMesh,
    kPolygons,
    kX,
    kY,
    kZ,
    kGetFrontUVQ,
    kGetBackUVQ,
    kGetUVHelper,
    kPointAt,
    kInstanceOfP,
    kAttributeDictionary,
    kDeleteKey,
    kName,
    kDisplayName,
    kCasecmp,
    kAdd,
    kClear,
    kTransformation,
    kToA,
    kPosition,
    kGetAttribute,
    kSetAttribute,
    kAlphaSet,
    kColorSet,
    kTextureSet,
    kSet,
    kActiveModel,
    kHostMethodCount
};

void internHostMethods();
ID hostMethod(HostMethod which);
const char* hostMethodName(HostMethod which);
