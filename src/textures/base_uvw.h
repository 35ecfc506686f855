// Root of the UVW generator family.
#pragma once

#include <memory>
#include <string>

#include "archive/serializable.h"
#include "xml/plugin_ref.h"

namespace CorvaneCore {

class BaseUVW : public CorvaneSerializable, public PluginTarget {
public:
    virtual void setDefaults() = 0;
    virtual int getType() = 0;
    // Recomputes the stored matrices from the decomposed placement.
    virtual void updateTransforms() = 0;
    virtual std::shared_ptr<BaseUVW> clone() = 0;
    virtual bool isEqual(const std::shared_ptr<BaseUVW>& other) = 0;
    std::u16string pluginKind() override { return u"uvw"; }
};

std::shared_ptr<BaseUVW> createUVW(int id);

}  // namespace CorvaneCore
