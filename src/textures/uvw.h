// UVW generators and the decomposed placement they are edited through.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/quick_archive.h"
#include "archive/serializable.h"
#include "archive/value_types.h"
#include "textures/base_uvw.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

// A placement kept as editable numbers: rotations in degrees, scales, offsets and mirror flags.
class TransformComponents : public CorvaneSerializable {
public:
    float x_rotation = 0.0f, y_rotation = 0.0f, z_rotation = 0.0f;
    float x_scale = 1.0f, y_scale = 1.0f, z_scale = 1.0f;
    float x_offset = 0.0f, y_offset = 0.0f, z_offset = 0.0f;
    int32_t x_mirror = 0, y_mirror = 0, z_mirror = 0;

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;

    // X * Y * Z, each axis scaled and mirrored in its own frame before its rotation.
    void compose(Matrix& out) const;
    // compose into the matrix, offsets into the offset.
    void applyTo(Transform& out) const;
    void reset() { *this = TransformComponents(); }
    bool operator==(const TransformComponents& other) const;
    bool operator!=(const TransformComponents& other) const { return !(*this == other); }

    // The twelve numbers in the writer's order.
    ComponentValues values() const;
};

class GenChannelUVW : public BaseUVW {
public:
    Transform uvw_transform;
    Transform tex_transform;
    int32_t wrap_u = 0;
    int32_t wrap_v = 0;
    int32_t uvw_channel = 1;
    TransformComponents uvwComponents;
    TransformComponents texComponents;

    GenChannelUVW() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 4; }
    void updateTransforms() override;
    std::shared_ptr<BaseUVW> clone() override;
    bool isEqual(const std::shared_ptr<BaseUVW>& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"UVWGenChannel"; }
};

// The words of GenEnvironmentUVW::mappingType, by index.
extern const char16_t* const kMappingTypeWords[4];

class GenEnvironmentUVW : public BaseUVW {
public:
    Matrix uvw_matrix;
    int32_t mappingType = 2;
    TransformComponents components;

    GenEnvironmentUVW() { setDefaults(); }
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    int getType() override { return 3; }
    void updateTransforms() override;
    std::shared_ptr<BaseUVW> clone() override;
    bool isEqual(const std::shared_ptr<BaseUVW>& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"UVWGenEnvironment"; }
};

// World and object projections share one layout: a transform and its components.
class GenProjectionUVW : public BaseUVW {
public:
    Transform uvw_transform;
    TransformComponents components;

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    void updateTransforms() override;
    bool isEqual(const std::shared_ptr<BaseUVW>& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;

protected:
    bool readFields(QuickArchive& archive);
};

class GenPlanarWorldUVW : public GenProjectionUVW {
public:
    GenPlanarWorldUVW() { GenProjectionUVW::setDefaults(); }
    int getType() override { return 0; }
    std::shared_ptr<BaseUVW> clone() override;
    std::u16string pluginType() override { return u"UVWGenPlanarWorld"; }
};

class GenObjectUVW : public GenProjectionUVW {
public:
    GenObjectUVW() { GenProjectionUVW::setDefaults(); }
    // Unlike its sisters it starts every read from its defaults.
    bool deserialize(QuickArchive& archive) override;
    int getType() override { return 1; }
    std::shared_ptr<BaseUVW> clone() override;
    std::u16string pluginType() override { return u"UVWGenObject"; }
};

}  // namespace CorvaneCore
