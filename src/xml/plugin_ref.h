// Plugin-valued parameters as the writer sees them: a target that names its own URL segment,
// so the writer needs to know none of the scene families.
#pragma once

#include <memory>
#include <string>

#include "archive/serializable.h"

namespace CorvaneCore {

// A scene object a plugin-valued parameter can point at: the root of each of the six families.
class PluginTarget : public CorvaneXMLSerializable {
public:
    // The URL segment after the caller's prefix; false when the prefix is already the whole URL.
    virtual bool urlSegment(std::u16string& segment) {
        segment = pluginType();
        return true;
    }
};

// A plugin-valued parameter: a pointer into one of the six families (possibly empty), or no
// family at all. It only borrows the pointer, for the length of one write.
class PluginRef {
public:
    PluginRef() = default;
    template <class Family>
    PluginRef(const std::shared_ptr<Family>& child) : target_(child.get()), hasFamily_(true) {}

    bool hasFamily() const { return hasFamily_; }
    PluginTarget* target() const { return target_; }

private:
    PluginTarget* target_ = nullptr;
    bool hasFamily_ = false;
};

}  // namespace CorvaneCore
