// Root of the camera family.
#pragma once

#include <memory>
#include <string>

#include "archive/serializable.h"
#include "xml/plugin_ref.h"

namespace CorvaneCore {

class BaseCamera : public CorvaneSerializable, public PluginTarget {
public:
    virtual int getType() = 0;
    virtual std::shared_ptr<BaseCamera> clone() = 0;
    virtual void setDefaults() = 0;
    std::u16string pluginKind() override { return u"settings"; }
};

}  // namespace CorvaneCore
