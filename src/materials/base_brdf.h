// Root of the BRDF layer family.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "archive/serializable.h"

namespace CorvaneCore {

class Base_BRDF : public CorvaneSerializable, public CorvaneXMLSerializable {
public:
    virtual int getType() = 0;
    virtual void setDefaults() = 0;
    virtual std::shared_ptr<Base_BRDF> clone() = 0;
    virtual bool isEqual(const std::shared_ptr<Base_BRDF>& other) = 0;

    int writeXML(AssetXmlWriter&, std::u16string) override { return 0; }
    std::u16string pluginType() override { return std::u16string(); }
    std::u16string pluginKind() override { return u"BRDF"; }

    std::u16string name;  // last segment of the layer's url
    bool layerFlagA;      // stored only
    bool layerFlagB;      // cleared by the material upgrade pass
    bool layerFlagC;      // stored only

    // The section that stands inside each layer's stream. A bad version word leaves the name
    // at its default and gives false; control characters leave the name in every case.
    bool readBaseSection(QuickArchive& archive);
    void writeBaseSection(QuickArchive& archive);

    // The fields a layer stores behind its base section (brdf_layer.h); most have none.
    template <class Fn, class... Layer>
    static void visitTrailingFields(Fn&, Layer&...) {}

protected:
    // Each concrete layer's constructor runs its setDefaults, which begins with this reset.
    Base_BRDF() = default;
    // The base part of a reset: the name becomes the plugin type, the flags their defaults.
    void resetBase();
    // Reads the layer's version word, then resets the whole layer (or, with `baseOnly`, its
    // base part), whatever the word said; true for a word of version 1 .. newest.
    bool readVersionThenReset(QuickArchive& archive, uint32_t newest, uint32_t& major,
                              bool baseOnly = false);
};

// Layer ids are single bits: 1, 2, 4, 8, 16, 32. Null for any other id.
std::shared_ptr<Base_BRDF> createBRDF(int id);

}  // namespace CorvaneCore
