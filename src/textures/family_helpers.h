// Small pieces shared by the texture, bitmap and UVW classes: the listed-field class frame,
// the version word, and the fixed frame of one asset.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>

#include "archive/field_list.h"
#include "archive/read_helpers.h"
#include "textures/base_texture.h"
#include "textures/child_slots.h"
#include "xml/asset_frame.h"
#include "xml/asset_xml_writer.h"
#include "xml/plugin_ref.h"

namespace CorvaneCore {

// One child asset of an object: the parameter that refers to it, the child, and the word its
// asset's URL takes below the parent's.
struct ChildAsset {
    const char* name;
    PluginRef child;
    const char16_t* pathWord;
};

// Writes each non-empty child under `url`, "/" and its path word, so its asset stands before its
// parent's.
inline void writeChildAssets(AssetXmlWriter& writer, const std::u16string& url,
                             std::initializer_list<ChildAsset> children) {
    for (const ChildAsset& asset : children) {
        if (asset.child.target())
            asset.child.target()->writeXML(writer, url + u"/" + asset.pathWord);
    }
}

// The parent's references to the children `writeChildAssets` wrote, in the order given.
inline void writeChildReferences(AssetXmlWriter& writer, const std::u16string& url,
                                 std::initializer_list<ChildAsset> children) {
    for (const ChildAsset& asset : children) {
        writer.writePlugin(asset.name, asset.child, url + u"/" + asset.pathWord);
    }
}

// Reads a texture's version word and returns the texture to its defaults; true when the minor
// half is 0 and the major lies between 1 and `newest`.
inline bool readTextureVersion(QuickArchive& archive, BaseTexture& texture, uint32_t newest,
                               uint32_t& major) {
    const VersionWord word = readVersionWord(archive);
    texture.setDefaults();
    major = word.major;
    return word.minor == 0 && major >= 1 && major <= newest;
}

// The children's assets, then the parent's frame opened at `url` with its references to them
// ahead of its other parameters.
inline void beginFrameAfterChildren(AssetXmlWriter& writer, const std::u16string& url,
                                    PluginTarget& self,
                                    std::initializer_list<ChildAsset> children) {
    writeChildAssets(writer, url, children);
    beginAssetFrame(writer, url, self);
    writeChildReferences(writer, url, children);
}

// The record operations, deep copy and comparison of a class whose stored fields are all in its
// `visitFields` list, newest version `Derived::kNewestVersion`. A class whose mandatory children
// must all be present before anything is written says so by `kChecksChildrenFirst`. Members that
// the list leaves out join the copy and the comparison through `deepenUnlisted` and
// `sameUnlisted`, which a class may hide with its own.
template <class Derived, class Base>
class ListedFamilyClass : public Base {
public:
    bool serialize(QuickArchive& archive) override {
        if (Derived::kChecksChildrenFirst && !mandatoryChildrenPresent(self())) return false;
        writeVersion(archive, Derived::kNewestVersion);
        return writeListedFields(archive, self());
    }
    std::shared_ptr<Base> clone() override {
        auto copy = std::make_shared<Derived>(self());
        deepenListedFields(*copy);
        copy->deepenUnlisted();
        return copy;
    }
    bool isEqual(const std::shared_ptr<Base>& other) override {
        if (!other || other->getType() != this->getType()) return false;
        const auto* theirs = dynamic_cast<const Derived*>(other.get());
        return theirs && sameListedFields(self(), *theirs) && self().sameUnlisted(*theirs);
    }

    void deepenUnlisted() {}
    bool sameUnlisted(const Derived&) const { return true; }

private:
    Derived& self() { return static_cast<Derived&>(*this); }
};

// A texture reads its version word, returns to its defaults, and then checks the word.
template <class Derived>
class TextureClass : public ListedFamilyClass<Derived, BaseTexture> {
public:
    bool deserialize(QuickArchive& archive) override {
        Derived& self = static_cast<Derived&>(*this);
        uint32_t major = 0;
        if (!readTextureVersion(archive, self, Derived::kNewestVersion, major)) return false;
        return readListedFields(archive, major, self);
    }
};

}  // namespace CorvaneCore
