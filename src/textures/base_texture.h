// Roots of the texture family and of its sister family of bitmaps.
#pragma once

#include <memory>
#include <string>

#include "archive/serializable.h"
#include "xml/plugin_ref.h"

namespace CorvaneCore {

class BaseTexture : public CorvaneSerializable, public PluginTarget {
public:
    virtual void setDefaults() = 0;
    virtual int getType() = 0;
    virtual std::shared_ptr<BaseTexture> clone() = 0;
    virtual bool isEqual(const std::shared_ptr<BaseTexture>& other) = 0;
    std::u16string pluginKind() override { return u"texture"; }
};

class BaseBitmap : public CorvaneSerializable, public PluginTarget {
public:
    virtual void setDefaults() = 0;
    virtual int getType() = 0;
    virtual std::shared_ptr<BaseBitmap> clone() = 0;
    virtual bool isEqual(const std::shared_ptr<BaseBitmap>& other) = 0;
    std::u16string pluginKind() override { return u"bitmap"; }
};

// Type id to a new object with its defaults; null for an id without a class (-1 means none).
std::shared_ptr<BaseTexture> createTexture(int id);
std::shared_ptr<BaseBitmap> createBitmap(int id);

}  // namespace CorvaneCore
