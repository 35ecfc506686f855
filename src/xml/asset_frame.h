// The fixed frame around one object's parameters: its asset, its plugin and the parameter list.
#pragma once

#include <string>

#include "archive/serializable.h"
#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

inline void beginAssetFrame(AssetXmlWriter& writer, const std::u16string& url,
                            CorvaneXMLSerializable& object, const char16_t* layout = u"") {
    writer.beginAsset(url, object.pluginKind(), layout);
    writer.beginPlugin(object.pluginType(), object.pluginKind());
    writer.beginParameters();
}

inline void endAssetFrame(AssetXmlWriter& writer) {
    writer.endParameters();
    writer.endPlugin();
    writer.endAsset();
}

}  // namespace CorvaneCore
