// The XML face that the conversions put around a material read from a record.
#pragma once

#include <memory>
#include <string>

#include "archive/serializable.h"
#include "materials/base_material.h"

class MtlCORVANEConverter : public CorvaneXMLSerializable {
public:
    explicit MtlCORVANEConverter(std::shared_ptr<CorvaneCore::BaseMaterial> material)
        : material(std::move(material)) {}

    // The material's whole document; nothing for a null material. `name` plays no part.
    int writeXML(AssetXmlWriter& writer, std::u16string name) override;
    std::u16string pluginType() override { return u"MtlCORVANE"; }
    std::u16string pluginKind() override { return u"material"; }

    std::shared_ptr<CorvaneCore::BaseMaterial> material;
};
