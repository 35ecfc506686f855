// Quillon::Vector, Quillon::Color, Quillon::Transform and Quillon::Material: Ruby objects that
// wrap native records, and the handles of the host's classes. RegisterHostClasses sets them up;
// the module entry does not call it, so none of this exists in the shipped extension until a
// deployment calls it after load.
#pragma once

#include <ruby.h>

#include "archive/value_types.h"
#include "upgrade/basic_material.h"

// Host classes and modules, in the order RegisterHostClasses looks them up.
enum class HostClass {
    ComponentDefinition,
    ComponentInstance,
    Material,
    Group,
    Face,
    Vertex,
    Drawingelement,
    Image,
    Entity,
    Model,
    Color,
    Texture,
    Vector3d,
    Point3d,
    Transformation,
    PolygonMesh,
    Count
};

// Keeps `module`, looks up the host's handles, defines the four classes under Quillon and
// gives the upgrade pass its Ruby host. A missing host class raises ArgumentError when this
// returns; the classes are then left undefined.
void RegisterHostClasses(VALUE module);

// Nil until RegisterHostClasses has run.
VALUE quillonModule();
VALUE sketchupModule();
VALUE hostClass(HostClass which);

// The product a × b: matrix a.m × b.m, offset a.m × b.offset + a.offset.
CorvaneCore::Transform multiplyTransforms(const CorvaneCore::Transform& a,
                                          const CorvaneCore::Transform& b);

// The record of a Quillon::Material value; false for anything else.
bool materialRecordOf(VALUE value, BasicMaterialRecord& out);
// Front and back layered materials from a Quillon::Material value; false for anything else.
bool materialToLayered(VALUE value, LayeredPair& out);
