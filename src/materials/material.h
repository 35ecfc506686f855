// The two materials that hold BRDF layers: one layer, or a list of them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "materials/base_brdf.h"
#include "materials/base_material.h"
#include "materials/material_helpers.h"

namespace CorvaneCore {

class MaterialSingleBRDF : public MaterialClass<MaterialSingleBRDF> {
public:
    static constexpr int kType = 0;
    MaterialSingleBRDF() { setDefaults(); }

    // False without a layer: a single material cannot be written without one.
    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    // Keeps the layer; clears the options and the base part.
    void setDefaults() override;
    // Clones and copies share the layer with the source.
    void duplicateChildren(MaterialDuplicator) {}
    bool isEqual(const std::shared_ptr<BaseMaterial>& other) override;
    std::u16string pluginType() override { return u"MtlSingleBRDF"; }

    static constexpr uint32_t kNewestVersion = 2;
    // The stored fields ahead of the layer; the layer itself is shared by copies, not cloned.
    template <class Fn, class... M>
    static void visitFields(Fn& fn, M&... m) {
        fn(1, m.singleOptionA...);
        fn(1, m.singleOptionB...);
    }

    int32_t singleOptionA;  // stored only
    int32_t singleOptionB;  // stored only
    std::shared_ptr<Base_BRDF> brdf;
};

class MaterialLayeredBRDF : public MaterialClass<MaterialLayeredBRDF> {
public:
    static constexpr int kType = 1;
    MaterialLayeredBRDF() { setDefaults(); }

    bool serialize(QuickArchive& archive) override;
    bool deserialize(QuickArchive& archive) override;
    void setDefaults() override;
    // Clones and copies alike own clones of the layers.
    void duplicateChildren(MaterialDuplicator);
    bool isEqual(const std::shared_ptr<BaseMaterial>& other) override;
    int writeXML(AssetXmlWriter& writer, std::u16string url) override;
    std::u16string pluginType() override { return u"MtlCORVANE"; }

    // The parts of the block that the folded output shares: each layer's own blocks under
    // `url`, and the leading parameters ("double_sided" and the "brdfs" list).
    void writeLayers(AssetXmlWriter& writer, const std::u16string& url);
    void writeLeadingParameters(AssetXmlWriter& writer, const std::u16string& url);

    static constexpr uint32_t kNewestVersion = 4;
    // The stored fields behind the layer list and ahead of the base section; version 1 holds
    // a bare name behind them instead of the section.
    template <class Fn, class... M>
    static void visitFields(Fn& fn, M&... m) {
        fn(1, m.double_sided...);
        fn(1, m.layeredOptionA...);
        fn(3, m.layeredOptionB...);
        fn(3, m.layeredOptionC...);
    }
    // The field appended behind the base section.
    template <class Fn, class... M>
    static void visitTrailingFields(Fn& fn, M&... m) {
        fn(4, m.layeredOptionD...);
    }

    std::vector<std::shared_ptr<Base_BRDF>> brdfs;
    int32_t double_sided;
    int32_t layeredOptionA;  // the four options are stored only
    int32_t layeredOptionB;
    int32_t layeredOptionC;
    int32_t layeredOptionD;

private:
    bool readLayers(QuickArchive& archive);
};

}  // namespace CorvaneCore
