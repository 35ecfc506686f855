// The two faces of every scene object: its archive form and its XML form.
#pragma once

#include <cstdint>
#include <string>

namespace CorvaneCore {
class QuickArchive;
}
class AssetXmlWriter;

namespace CorvaneCore {

class CorvaneSerializable {
public:
    virtual ~CorvaneSerializable() = default;
    virtual bool serialize(QuickArchive& archive) = 0;
    virtual bool deserialize(QuickArchive& archive) = 0;
};

}  // namespace CorvaneCore

class CorvaneXMLSerializable {
public:
    virtual ~CorvaneXMLSerializable() = default;
    virtual int writeXML(AssetXmlWriter& writer, std::u16string name) = 0;
    virtual std::u16string pluginType() = 0;
    virtual std::u16string pluginKind() = 0;
};

namespace CorvaneCore {

// A version word holds the major version in its high half and the minor (always 0) in its low.
inline uint32_t versionWord(uint32_t major) { return major << 16; }
inline uint32_t versionMajor(uint32_t word) { return word >> 16; }
inline uint32_t versionMinor(uint32_t word) { return word & 0xFFFF; }

}  // namespace CorvaneCore
