// UVW generators and the decomposed placement they are edited through.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/quick_archive.h"
#include "archive/serializable.h"
#include "archive/value_types.h"
#include "textures/base_uvw.h"
#include "textures/family_helpers.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

// A placement kept as editable numbers: rotations in degrees, scales, offsets and mirror flags.
class TransformComponents : public CorvaneSerializable {
public:
    float x_rotation = 0.0f, y_rotation = 0.0f, z_rotation = 0.0f;
    float x_scale = 1.0f, y_scale = 1.0f, z_scale = 1.0f;
    float x_offset = 0.0f, y_offset = 0.0f, z_offset = 0.0f;
    int32_t x_mirror = 0, y_mirror = 0, z_mirror = 0;

    bool serialize(QuickArchive& archive) override { return writeTo(archive); }
    bool deserialize(QuickArchive& archive) override;
    bool writeTo(QuickArchive& archive) const;

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, s.x_rotation...);
        fn(1, s.y_rotation...);
        fn(1, s.z_rotation...);
        fn(1, s.x_scale...);
        fn(1, s.y_scale...);
        fn(1, s.z_scale...);
        fn(1, s.x_offset...);
        fn(1, s.y_offset...);
        fn(1, s.z_offset...);
        fn(1, s.x_mirror...);
        fn(1, s.y_mirror...);
        fn(1, s.z_mirror...);
    }

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

// A placement is a field of its generator's list with a version word of its own.
inline bool readField(QuickArchive& archive, TransformComponents& components) {
    return components.deserialize(archive);
}
inline bool writeField(QuickArchive& archive, const TransformComponents& components) {
    return components.writeTo(archive);
}

// A UVW generator whose version 2 is its listed fields and whose version 1 has a layout of its
// own, read by the class's `readFirstVersion`.
template <class Derived>
class TwoLayoutUVW : public ListedFamilyClass<Derived, BaseUVW> {
public:
    static constexpr bool kChecksChildrenFirst = false;

    bool deserialize(QuickArchive& archive) override {
        Derived& self = static_cast<Derived&>(*this);
        uint32_t major = 0;
        if (!readVersionIn(archive, 1, Derived::kNewestVersion, major)) return false;
        if (major == 2) return readListedFields(archive, major, self);
        self.readFirstVersion(archive);
        return true;
    }
};

// Reading relies on the fresh object of the factory: a version 1 record leaves the components
// it does not name as they were.
class GenChannelUVW : public TwoLayoutUVW<GenChannelUVW> {
public:
    static constexpr uint32_t kNewestVersion = 2;

    Transform uvw_transform;
    Transform tex_transform;
    int32_t wrap_u;
    int32_t wrap_v;
    int32_t uvw_channel;
    TransformComponents uvwComponents;
    TransformComponents texComponents;

    GenChannelUVW() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 4;
    int getType() override { return kType; }
    void updateTransforms() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"UVWGenChannel"; }

    // The newest layout; version 1 has a branch of its own.
    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(2, s.uvw_transform...);
        fn(2, s.tex_transform...);
        fn(2, s.wrap_u...);
        fn(2, s.wrap_v...);
        fn(2, s.uvw_channel...);
        fn(2, s.uvwComponents...);
        fn(2, s.texComponents...);
    }

private:
    friend class TwoLayoutUVW<GenChannelUVW>;
    void readFirstVersion(QuickArchive& archive);
};

// The words of GenEnvironmentUVW::mappingType, by index.
extern const char16_t* const kMappingTypeWords[4];

// Like GenChannelUVW it relies on the factory's fresh object.
class GenEnvironmentUVW : public TwoLayoutUVW<GenEnvironmentUVW> {
public:
    static constexpr uint32_t kNewestVersion = 2;

    Matrix uvw_matrix;
    int32_t mappingType;
    TransformComponents components;

    GenEnvironmentUVW() { setDefaults(); }
    void setDefaults() override;
    static constexpr int kType = 3;
    int getType() override { return kType; }
    void updateTransforms() override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"UVWGenEnvironment"; }

    // The newest layout; version 1 has a branch of its own.
    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(2, s.uvw_matrix...);
        fn(2, s.mappingType...);
        fn(2, s.components...);
    }

private:
    friend class TwoLayoutUVW<GenEnvironmentUVW>;
    void readFirstVersion(QuickArchive& archive);
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

    template <class Fn, class... S>
    static void visitFields(Fn& fn, S&... s) {
        fn(1, s.uvw_transform...);
        fn(1, s.components...);
    }

protected:
    bool readFields(QuickArchive& archive);
};

class GenPlanarWorldUVW : public GenProjectionUVW {
public:
    GenPlanarWorldUVW() { GenProjectionUVW::setDefaults(); }
    static constexpr int kType = 0;
    int getType() override { return kType; }
    std::shared_ptr<BaseUVW> clone() override;
    std::u16string pluginType() override { return u"UVWGenPlanarWorld"; }
};

class GenObjectUVW : public GenProjectionUVW {
public:
    GenObjectUVW() { GenProjectionUVW::setDefaults(); }
    // Unlike its sisters it starts every read from its defaults.
    bool deserialize(QuickArchive& archive) override;
    static constexpr int kType = 1;
    int getType() override { return kType; }
    std::shared_ptr<BaseUVW> clone() override;
    std::u16string pluginType() override { return u"UVWGenObject"; }
};

}  // namespace CorvaneCore
