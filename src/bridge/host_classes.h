// The handles of the host's classes and modules. RegisterHostClasses sets them up; the module
// entry does not call it, so none of this exists in the shipped extension until a deployment
// calls it after load.
#pragma once

#include <ruby.h>

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

// Keeps `module`, looks up the host's handles, defines the four value classes under Quillon and
// gives the upgrade pass its Ruby host. A missing host class raises ArgumentError when this
// returns; the classes are then left undefined.
void RegisterHostClasses(VALUE module);

// Nil until RegisterHostClasses has run.
VALUE quillonModule();
VALUE sketchupModule();
VALUE hostClass(HostClass which);

// Whether `value` is a kind of `klass`; false while `klass` is nil.
bool isKindOf(VALUE value, VALUE klass);
bool isHost(VALUE value, HostClass which);
