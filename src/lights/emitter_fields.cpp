#include "lights/emitter_fields.h"

#include "xml/asset_xml_writer.h"

namespace CorvaneCore {

void EmitterFields::resetEmitter(float defaultIntensity) {
    color = Color(1, 1, 1);
    shadowColor = Color(0, 0, 0);
    cutoffThreshold = 0.005f;
    shadowBias = 0.0f;
    intensity = defaultIntensity;
    carriedScale = 1.0f;
    units = 0;
    photonSubdivs = 500;
    causticSubdivs = 1000;
    carriedMode = 3;
    enabled = true;
    shadows = true;
    transform = Transform::identity();
    affectDiffuse = true;
    affectSpecular = true;
}

void EmitterFields::writeEmitterHead(AssetXmlWriter& writer) const {
    writer.writeColor("color", color);
    writer.writeColor("shadowColor", shadowColor);
    writer.writeFloat("cutoffThreshold", cutoffThreshold);
}

void PointEmitterFields::resetPointEmitter(float defaultIntensity) {
    resetEmitter(defaultIntensity);
    decay = 0.0f;
    shadowSubdivs = 8;
    shadowRadius = 0.0f;
}

void PointEmitterFields::writeFalloff(AssetXmlWriter& writer) const {
    writer.writeFloat("shadowBias", shadowBias);
    writer.writeFloat("decay", decay);
    writer.writeFloat("intensity", intensity);
    writer.writeFloat("shadowRadius", shadowRadius);
}

void PointEmitterFields::writeSubdivs(AssetXmlWriter& writer) const {
    writer.writeInteger("photonSubdivs", static_cast<int32_t>(photonSubdivs));
    writer.writeInteger("causticSubdivs", static_cast<int32_t>(causticSubdivs));
    writer.writeInteger("shadowSubdivs", static_cast<int32_t>(shadowSubdivs));
}

}  // namespace CorvaneCore
