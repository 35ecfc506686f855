// Root of the light family.
#pragma once

#include <memory>
#include <string>

#include "archive/serializable.h"
#include "xml/plugin_ref.h"

namespace CorvaneCore {

class BaseLight : public CorvaneSerializable, public PluginTarget {
public:
    virtual int getType() = 0;
    virtual std::shared_ptr<BaseLight> clone() = 0;
    virtual bool isEqual(const std::shared_ptr<BaseLight>& other) = 0;
    virtual void setDefaults() = 0;

    // The base writes nothing; lights without output of their own keep this.
    int writeXML(AssetXmlWriter&, std::u16string) override { return 0; }
    std::u16string pluginType() override { return std::u16string(); }
    std::u16string pluginKind() override { return u"light"; }
    // A sun's caller passes its whole URL.
    bool urlSegment(std::u16string& segment) override;
};

// The type id that only the sun light reports.
constexpr int kSunLightType = 5;

inline bool BaseLight::urlSegment(std::u16string& segment) {
    if (getType() == kSunLightType) return false;
    segment = pluginType();
    return true;
}

// Type id to a new light with its defaults; null for an id without a class.
std::shared_ptr<BaseLight> createLight(int id);

}  // namespace CorvaneCore
