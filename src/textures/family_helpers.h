// Small pieces shared by the texture, bitmap and UVW classes: deep copies and comparisons of
// child slots, and the fixed frame of one asset.
#pragma once

#include <memory>
#include <string>

#include "archive/read_helpers.h"
#include "textures/base_texture.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

// A child slot's own deep copy; an empty slot stays empty.
template <class Base>
std::shared_ptr<Base> cloneChild(const std::shared_ptr<Base>& child) {
    return child ? child->clone() : nullptr;
}

// Two slots match when both are empty or the children compare equal.
template <class Base>
bool sameChild(const std::shared_ptr<Base>& mine, const std::shared_ptr<Base>& theirs) {
    if (!mine) return !theirs;
    return theirs && mine->isEqual(theirs);
}

// Writes a non-empty child under `slotUrl`, so its asset stands before its parent's.
template <class Base>
void writeChildXML(AssetXmlWriter& writer, const std::shared_ptr<Base>& child,
                   const std::u16string& slotUrl) {
    if (child) child->writeXML(writer, slotUrl);
}

// Reads a texture's version word and returns the texture to its defaults; true when the minor
// half is 0 and the major lies between 1 and `newest`.
inline bool readTextureVersion(QuickArchive& archive, BaseTexture& texture, uint32_t newest,
                               uint32_t& major) {
    uint32_t word = 0;
    archive.read(word);
    texture.setDefaults();
    major = versionMajor(word);
    return versionMinor(word) == 0 && major >= 1 && major <= newest;
}

// Opens asset, plugin and parameter list of one object.
inline void beginAssetFrame(AssetXmlWriter& writer, const std::u16string& url,
                            const std::u16string& pluginType, const std::u16string& pluginKind) {
    writer.beginAsset(url, pluginKind, u"");
    writer.beginPlugin(pluginType, pluginKind);
    writer.beginParameters();
}

inline void endAssetFrame(AssetXmlWriter& writer) {
    writer.endParameters();
    writer.endPlugin();
    writer.endAsset();
}

// Gives a texture class its deep `clone` and `isEqual` from two members of its own:
// `cloneChildren()`, which replaces each child by its clone, and `sameAs(other)`, which compares
// the children in slot order and then the fields.
template <class Derived>
class TextureClass : public BaseTexture {
public:
    std::shared_ptr<BaseTexture> clone() override {
        auto copy = std::make_shared<Derived>(static_cast<const Derived&>(*this));
        copy->cloneChildren();
        return copy;
    }
    bool isEqual(const std::shared_ptr<BaseTexture>& other) override {
        if (!other || other->getType() != getType()) return false;
        const auto* theirs = dynamic_cast<const Derived*>(other.get());
        return theirs && static_cast<Derived*>(this)->sameAs(*theirs);
    }
};

}  // namespace CorvaneCore
