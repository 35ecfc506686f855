// Root of the material family.
#pragma once

#include <memory>
#include <string>

#include "archive/serializable.h"

namespace CorvaneCore {

class BaseMaterial : public CorvaneSerializable, public CorvaneXMLSerializable {
public:
    virtual int getType() = 0;
    virtual void setDefaults() = 0;
    // A deep copy under a new unique name.
    virtual std::shared_ptr<BaseMaterial> clone() = 0;
    // A deep copy that keeps the name.
    virtual std::shared_ptr<BaseMaterial> copy() = 0;
    virtual bool isEqual(const std::shared_ptr<BaseMaterial>& other) = 0;

    int writeXML(AssetXmlWriter&, std::wstring) override { return 0; }
    std::wstring pluginType() override { return std::wstring(); }
    std::wstring pluginKind() override { return L"material"; }

    std::wstring name;  // also the last segment of the material's URL
    std::wstring uuid;
};

// Ids 0 to 14; null for any other.
std::shared_ptr<BaseMaterial> createMaterial(int id);

}  // namespace CorvaneCore
