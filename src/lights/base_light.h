// Root of the light family.
#pragma once

#include <memory>
#include <string>

#include "archive/serializable.h"

namespace CorvaneCore {

class BaseLight : public CorvaneSerializable, public CorvaneXMLSerializable {
public:
    virtual int getType() = 0;
    virtual std::shared_ptr<BaseLight> clone() = 0;
    virtual bool isEqual(const std::shared_ptr<BaseLight>& other) = 0;
    virtual void setDefaults() = 0;

    // The base writes nothing; lights without output of their own keep this.
    int writeXML(AssetXmlWriter&, std::u16string) override { return 0; }
    std::u16string pluginType() override { return std::u16string(); }
    std::u16string pluginKind() override { return u"light"; }
};

// The type id that only the sun light reports.
constexpr int kSunLightType = 5;

// Type id to a new light with its defaults; null for an id without a class.
std::shared_ptr<BaseLight> createLight(int id);

}  // namespace CorvaneCore
