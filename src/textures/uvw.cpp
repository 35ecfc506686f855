#include "textures/uvw.h"

#include <cmath>

#include "archive/field_list.h"
#include "archive/read_helpers.h"
#include "textures/family_helpers.h"

namespace CorvaneCore {

namespace {

// Degrees to radians, held in single precision as the stored placements were made with it.
constexpr float kDegreesToRadians = 0.017453292f;

// The column `c` carried through `a`: each row of `a` times `c`, summed in column order.
Vector apply(const Matrix& a, const Vector& c) {
    return Vector(a.v[0].x * c.x + a.v[1].x * c.y + a.v[2].x * c.z,
                  a.v[0].y * c.x + a.v[1].y * c.y + a.v[2].y * c.z,
                  a.v[0].z * c.x + a.v[1].z * c.y + a.v[2].z * c.z);
}

Matrix multiply(const Matrix& a, const Matrix& b) {
    Matrix out;
    for (int j = 0; j < 3; ++j) out.v[j] = apply(a, b.v[j]);
    return out;
}

void scaleColumn(Vector& column, float scale, int32_t mirror) {
    const float factor = mirror != 0 ? -scale : scale;
    column = Vector(column.x * factor, column.y * factor, column.z * factor);
}

Matrix rotationX(float degrees, float scale, int32_t mirror) {
    const float angle = degrees * kDegreesToRadians;
    const float c = std::cos(angle), s = std::sin(angle);
    Matrix m;
    m.v = {Vector(1, 0, 0), Vector(0, c, s), Vector(0, -s, c)};
    scaleColumn(m.v[0], scale, mirror);
    return m;
}

Matrix rotationY(float degrees, float scale, int32_t mirror) {
    const float angle = degrees * kDegreesToRadians;
    const float c = std::cos(angle), s = std::sin(angle);
    Matrix m;
    m.v = {Vector(c, 0, -s), Vector(0, 1, 0), Vector(s, 0, c)};
    scaleColumn(m.v[1], scale, mirror);
    return m;
}

Matrix rotationZ(float degrees, float scale, int32_t mirror) {
    const float angle = degrees * kDegreesToRadians;
    const float c = std::cos(angle), s = std::sin(angle);
    Matrix m;
    m.v = {Vector(c, s, 0), Vector(-s, c, 0), Vector(0, 0, 1)};
    scaleColumn(m.v[2], scale, mirror);
    return m;
}

}  // namespace

// ---------------------------------------------------------------- TransformComponents

bool TransformComponents::writeTo(QuickArchive& archive) const {
    writeVersion(archive, 1);
    return writeListedFields(archive, *this);
}

// Back to the defaults whatever the word says, then only version 1 is read.
bool TransformComponents::deserialize(QuickArchive& archive) {
    const VersionWord word = readVersionWord(archive);
    reset();
    if (word.minor != 0 || word.major != 1) return false;
    return readListedFields(archive, word.major, *this);
}

void TransformComponents::compose(Matrix& out) const {
    const Matrix x = rotationX(x_rotation, x_scale, x_mirror);
    const Matrix y = rotationY(y_rotation, y_scale, y_mirror);
    const Matrix z = rotationZ(z_rotation, z_scale, z_mirror);
    out = multiply(multiply(x, y), z);
}

void TransformComponents::applyTo(Transform& out) const {
    compose(out.m);
    out.offset = Vector(x_offset, y_offset, z_offset);
}

bool TransformComponents::operator==(const TransformComponents& other) const {
    return sameListedFields(*this, other);
}

ComponentValues TransformComponents::values() const {
    ComponentValues v;
    v.rotation[0] = x_rotation, v.rotation[1] = y_rotation, v.rotation[2] = z_rotation;
    v.scale[0] = x_scale, v.scale[1] = y_scale, v.scale[2] = z_scale;
    v.offset[0] = x_offset, v.offset[1] = y_offset, v.offset[2] = z_offset;
    v.mirror[0] = x_mirror, v.mirror[1] = y_mirror, v.mirror[2] = z_mirror;
    return v;
}

// ---------------------------------------------------------------- GenChannelUVW

void GenChannelUVW::setDefaults() {
    uvw_transform = Transform::identity();
    tex_transform = Transform::identity();
    wrap_u = 0;
    wrap_v = 0;
    uvw_channel = 1;
    uvwComponents.reset();
    texComponents.reset();
}

// Version 1 kept two angles and two mirror flags of the texture placement between the
// transforms and the wrap settings, and no placement of the channel.
void GenChannelUVW::readFirstVersion(QuickArchive& archive) {
    archive.read(uvw_transform);
    archive.read(tex_transform);
    archive.read(texComponents.x_rotation);
    archive.read(texComponents.y_rotation);
    archive.read(texComponents.x_mirror);
    archive.read(texComponents.y_mirror);
    archive.read(wrap_u);
    archive.read(wrap_v);
    archive.read(uvw_channel);
}

void GenChannelUVW::updateTransforms() {
    uvwComponents.applyTo(uvw_transform);
    texComponents.applyTo(tex_transform);
}

int GenChannelUVW::writeXML(AssetXmlWriter& writer, std::u16string url) {
    updateTransforms();
    url += u"/" + pluginType();
    beginAssetFrame(writer, url, *this);
    writer.writeComponentTransform("uvw_transform", uvwComponents.values());
    writer.writeTransform("tex_transform", tex_transform);
    writer.writeInteger("wrap_u", wrap_u);
    writer.writeInteger("wrap_v", wrap_v);
    writer.writeInteger("uvw_channel", uvw_channel);
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- GenEnvironmentUVW

const char16_t* const kMappingTypeWords[4] = {u"angular", u"cubic", u"spherical", u"mirror_ball"};

void GenEnvironmentUVW::setDefaults() {
    uvw_matrix = Matrix::identity();
    mappingType = 2;
    components.reset();
}

// Version 1 kept two angles and two mirror flags, z ahead of x.
void GenEnvironmentUVW::readFirstVersion(QuickArchive& archive) {
    archive.read(uvw_matrix);
    archive.read(mappingType);
    archive.read(components.z_rotation);
    archive.read(components.x_rotation);
    archive.read(components.z_mirror);
    archive.read(components.x_mirror);
}

// Only a matrix is stored, so the offsets reach no stored field.
void GenEnvironmentUVW::updateTransforms() { components.compose(uvw_matrix); }

// The renderer takes the orientation as "uvw_matrix" and the scale and offset as
// "uvw_transform", so the one set of components is split over both.
int GenEnvironmentUVW::writeXML(AssetXmlWriter& writer, std::u16string url) {
    updateTransforms();
    url += u"/" + pluginType();
    beginAssetFrame(writer, url, *this);

    TransformComponents orientation;
    orientation.x_rotation = components.x_rotation;
    orientation.y_rotation = components.y_rotation;
    orientation.z_rotation = components.z_rotation;
    orientation.x_mirror = components.x_mirror;
    orientation.y_mirror = components.y_mirror;
    orientation.z_mirror = components.z_mirror;
    writer.writeComponentMatrix("uvw_matrix", orientation.values());

    TransformComponents placement;
    placement.x_scale = components.x_scale;
    placement.y_scale = components.y_scale;
    placement.z_scale = components.z_scale;
    placement.x_offset = components.x_offset;
    placement.y_offset = components.y_offset;
    placement.z_offset = components.z_offset;
    writer.writeComponentTransform("uvw_transform", placement.values());

    // An index outside the table has no word; it is written as an empty value.
    const bool known = mappingType >= 0 && mappingType < 4;
    writer.writeString(u"mapping_type", known ? kMappingTypeWords[mappingType] : u"");
    endAssetFrame(writer);
    return 0;
}

// ---------------------------------------------------------------- world and object projections

void GenProjectionUVW::setDefaults() {
    uvw_transform = Transform::identity();
    components.reset();
}

bool GenProjectionUVW::serialize(QuickArchive& archive) {
    writeVersion(archive, 1);
    return writeListedFields(archive, *this);
}

bool GenProjectionUVW::readFields(QuickArchive& archive) {
    uint32_t major = 0;
    if (!readVersionIn(archive, 1, 1, major)) return false;
    return readListedFields(archive, major, *this);
}

bool GenProjectionUVW::deserialize(QuickArchive& archive) { return readFields(archive); }

bool GenObjectUVW::deserialize(QuickArchive& archive) {
    setDefaults();
    return readFields(archive);
}

void GenProjectionUVW::updateTransforms() { components.applyTo(uvw_transform); }

bool GenProjectionUVW::isEqual(const std::shared_ptr<BaseUVW>& other) {
    if (!other || other->getType() != getType()) return false;
    const auto* o = dynamic_cast<const GenProjectionUVW*>(other.get());
    return o && sameListedFields(*this, *o);
}

int GenProjectionUVW::writeXML(AssetXmlWriter& writer, std::u16string url) {
    updateTransforms();
    url += u"/" + pluginType();
    beginAssetFrame(writer, url, *this);
    writer.writeComponentTransform("uvw_transform", components.values());
    endAssetFrame(writer);
    return 0;
}

std::shared_ptr<BaseUVW> GenPlanarWorldUVW::clone() {
    return std::make_shared<GenPlanarWorldUVW>(*this);
}

std::shared_ptr<BaseUVW> GenObjectUVW::clone() { return std::make_shared<GenObjectUVW>(*this); }

}  // namespace CorvaneCore
