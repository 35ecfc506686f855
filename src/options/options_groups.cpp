#include "options/options_groups.h"

#include "archive/quick_archive.h"
#include "archive/read_helpers.h"
#include "options/options_io.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

namespace CorvaneCore {

namespace {

constexpr uint32_t kFirstParamsMajor = 1;
constexpr uint32_t kDetailRowsSince = 5;
constexpr uint32_t kSamplerSlotSince = 2;
// The renderer only ever runs the path sampler of this kind; stored values are overruled.
constexpr int32_t kForcedPathSamplerType = 2;

// A cache path is narrow in the record and wide in the stream. A null path writes as the empty
// string; reading an empty string leaves the path as it was.
template <class Io>
void transferCachePath(Io& io, std::optional<std::string>& path) {
    std::u16string wide;
    if constexpr (Io::kReading) {
        io(wide);
        if (!wide.empty()) path = wideToUtf8(wide);
    } else {
        if (path) wide = utf8ToWide(*path);
        io(wide);
    }
}

// Read and thrown away, or written as given.
template <class Io, class T>
void transferIgnored(Io& io, T written) {
    T value = written;
    io(value);
}

template <class Io>
void transferSamplingRows(Io& io, OmbraUtils::OmbraParams& p) {
    auto& is = p.imageSampler;
    auto& c = p.carried;
    io(p.imageFilter.on);
    io(is.type), io(is.fixed_subdivs), io(is.dmc_minSubdivs), io(is.dmc_maxSubdivs);
    io(is.dmc_threshold), io(is.subdivision_minRate), io(is.subdivision_maxRate);
    io(is.subdivision_threshold), io(is.subdivision_jitter), io(is.subdivision_edges);
    io(c.carried01), io(is.subdivision_normals), io(is.subdivision_normals_threshold);
    io(c.carried02), io(c.carried03);
    io(p.camera.type);
    auto& dof = p.cameraDof;
    io(dof.on), io(dof.subdivs), io(dof.center_bias), io(dof.sides_on), io(dof.sides_num);
    io(dof.anisotropy);
    auto& mb = p.motionBlur;
    io(mb.on), io(mb.geom_samples), io(c.carried04), io(c.carried05), io(mb.subdivs);
    io(c.carried06), io(c.carried07), io(c.carried08), io(c.carried09), io(c.carried10);
    io(mb.low_samples), io(mb.duration), io(mb.interval_center), io(c.carried11), io(mb.bias);
}

template <class Io>
void transferGIRows(Io& io, OmbraUtils::OmbraParams& p) {
    auto& gi = p.gi;
    io(gi.on), io(gi.refract_caustics), io(gi.reflect_caustics), io(gi.saturation);
    io(gi.contrast), io(gi.contrast_base), io(gi.primary_engine), io(gi.primary_multiplier);
    io(gi.secondary_engine), io(gi.secondary_multiplier);
    io(p.dmcGI.subdivs), io(p.dmcGI.depth);
    io(gi.save_maps_per_frame);
}

template <class Io>
void transferIrradianceRows(Io& io, OmbraUtils::OmbraParams& p) {
    auto& im = p.irradianceMap;
    io(im.min_rate), io(im.max_rate), io(im.subdivs), io(im.interp_samples);
    io(im.calc_interp_samples), io(im.color_threshold), io(im.normal_threshold);
    io(im.distance_threshold), io(im.show_samples), io(im.interpolation_mode), io(im.mode);
    io(im.dont_delete), io(im.randomize_samples), io(im.show_calc_phase);
    io(im.show_direct_light), io(im.multipass), io(im.auto_save);
    transferCachePath(io, p.files.irradianceFile);
    io(im.lookup_mode), io(im.check_sample_visibility), io(p.carried.carried12);
    transferCachePath(io, p.files.irradianceAutoSaveFile);
    if (io.has(kDetailRowsSince)) {
        io(im.detail_enhancement), io(im.detail_radius), io(im.detail_subdivs_mult);
        io(im.detail_scale);
    } else {
        // Older renderers kept a single detail value here that no longer maps to anything.
        transferIgnored(io, 0.0f);
    }
}

template <class Io>
void transferPhotonRows(Io& io, OmbraUtils::OmbraParams& p) {
    auto& pm = p.photonMap;
    io(pm.bounces), io(pm.search_distance), io(pm.max_photons), io(pm.prefilter);
    io(pm.prefilter_samples), io(pm.mode), io(pm.multiplier), io(pm.auto_search_distance);
    io(pm.convex_hull_estimate), io(pm.dont_delete), io(pm.auto_save);
    transferCachePath(io, p.files.photonFile);
    io(pm.retrace_corners), io(pm.retrace_bounces), io(pm.store_direct_light);
    io(pm.max_density);
    transferCachePath(io, p.files.photonAutoSaveFile);
}

template <class Io>
void transferLightCacheRows(Io& io, OmbraUtils::OmbraParams& p) {
    auto& lc = p.lightCache;
    io(lc.subdivs), io(lc.sample_size), io(lc.filter_type), io(lc.filter_size), io(lc.depth);
    io(lc.show_calc_phase), io(lc.store_direct_light), io(lc.world_scale), io(lc.mode);
    transferCachePath(io, p.files.lightCacheFile);
    io(lc.dont_delete), io(lc.auto_save);
    transferCachePath(io, p.files.lightCacheAutoSaveFile);
    io(lc.filter_samples), io(lc.prefilter), io(lc.prefilter_samples);
    io(lc.use_for_glossy_rays), io(lc.num_passes), io(lc.adaptive_sampling);
}

template <class Io>
void transferCausticsRows(Io& io, OmbraUtils::OmbraParams& p) {
    auto& ca = p.caustics;
    io(ca.on), io(ca.search_distance), io(ca.max_photons), io(ca.multiplier);
    io(ca.max_density), io(ca.mode), io(ca.dont_delete), io(ca.auto_save);
    transferCachePath(io, p.files.causticsFile);
    transferCachePath(io, p.files.causticsAutoSaveFile);
}

template <class Io>
void transferEngineRows(Io& io, OmbraUtils::OmbraParams& p) {
    auto& rc = p.raycaster;
    io(rc.maxLevels), io(rc.minLeafSize), io(rc.faceLevelCoef), io(rc.dynMemLimit);
    auto& rg = p.regionsGenerator;
    io(rg.xc), io(rg.yc), io(rg.xymeans), io(rg.seqtype), io(rg.reverse);
    transferIgnored(io, int32_t(0));  // reserved, always 0
    auto& dmc = p.dmcSampler;
    io(dmc.time_dependent), io(p.carried.carried13), io(dmc.adaptive_amount);
    io(dmc.adaptive_threshold), io(dmc.adaptive_min_samples), io(dmc.subdivs_mult);
    if (io.has(kSamplerSlotSince)) {
        transferIgnored(io, dmc.path_sampler_type);
        if constexpr (Io::kReading) dmc.path_sampler_type = kForcedPathSamplerType;
    }
    auto& cm = p.colorMapping;
    io(cm.type), io(cm.affect_background), io(cm.clamp_output);
    if (io.has(3)) io(cm.subpixel_mapping);
    if (io.has(4)) io(cm.gamma);
}

template <class Io>
void transferOptionRows(Io& io, OmbraUtils::OmbraParams& p) {
    auto& o = p.options;
    io(o.geom_displacement), io(o.light_doLights), io(o.light_doShadows);
    io(o.light_doDefaultLights), io(o.light_onlyGI), io(o.light_doHiddenLights);
    io(o.mtl_reflectionRefraction), io(o.mtl_limitDepth), io(o.mtl_maxDepth), io(o.mtl_doMaps);
    io(o.mtl_filterMaps), io(o.mtl_transpMaxLevels), io(o.mtl_transpCutoff), io(o.mtl_glossy);
    io(o.gi_dontRenderImage), io(o.mtl_override_on), io(o.ray_bias), io(p.carried.carried14);
    io(o.misc_lowThreadPriority);
    auto& dd = p.defaultDisplacement;
    io(dd.override_on), io(dd.edgeLength), io(dd.viewDependent), io(dd.maxSubdivs);
    io(dd.tightBounds), io(dd.amount), io(dd.relative);
    io(p.carried.carried15), io(p.carried.carried16);
}

template <class Io>
void transferParams(Io& io, OmbraUtils::OmbraParams& p) {
    transferSamplingRows(io, p);
    transferGIRows(io, p);
    transferIrradianceRows(io, p);
    transferPhotonRows(io, p);
    transferLightCacheRows(io, p);
    transferCausticsRows(io, p);
    transferEngineRows(io, p);
    transferOptionRows(io, p);
}

template <class Io>
void transferFrameData(Io& io, OmbraUtils::OmbraFrameData& f) {
    io(f.t), io(f.frameStart), io(f.frameEnd), io(f.currentFrame);
    io(f.worldToCam), io(f.camToWorld);
    io(f.fov), io(f.nearRange), io(f.farRange), io(f.focal_dist), io(f.aperture), io(f.rotation);
    io(f.clippingPlanes), io(f.clipNear), io(f.clipFar), io(f.projType), io(f.zoomFractor);
    io(f.infiniteProj), io(f.height), io(f.auto_fit), io(f.dist), io(f.curve);
    io(f.orthoAdjustToScene);
    io(f.ambient), io(f.background), io(f.globalLightLevel), io(f.ombraGIBackground);
    io(f.ombraRRBackground), io(f.ombraRefractBackground);
    io(f.rgn_left), io(f.rgn_width), io(f.rgn_top), io(f.rgn_height);
    io(f.frameCarriedA), io(f.frameCarriedB), io(f.bmp_width), io(f.bmp_height);
    io(f.r_left), io(f.r_width), io(f.r_top), io(f.r_height);
    io(f.devAspect), io(f.fieldMask), io(f.fieldOrder), io(f.firstField);
    io(f.dark_mult), io(f.bright_mult);
}

Transform narrowed(const DoubleTransform& t) {
    Transform out;
    out.m = t.m;
    out.offset = Vector(static_cast<float>(t.offset[0]), static_cast<float>(t.offset[1]),
                        static_cast<float>(t.offset[2]));
    return out;
}

}  // namespace

// ---------------------------------------------------------------- CorvaneParams

void CorvaneParams::setDefaults() {
    OmbraParams::setDefaults();
    regionsGenerator.seqtype = 4;
}

bool CorvaneParams::serialize(QuickArchive& archive) {
    writeVersion(archive, kMajor);
    RowWriter writer(archive);
    transferParams(writer, *this);
    return true;
}

bool CorvaneParams::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major)) return false;
    if (major < kFirstParamsMajor || major > kMajor) return false;
    RowReader reader(archive, major);
    transferParams(reader, *this);
    return true;
}

// ---------------------------------------------------------------- CorvaneFrameData

bool CorvaneFrameData::serialize(QuickArchive& archive) {
    writeVersion(archive, kMajor);
    RowWriter writer(archive);
    transferFrameData(writer, *this);
    return true;
}

bool CorvaneFrameData::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major) || major != kMajor) return false;
    RowReader reader(archive, major);
    transferFrameData(reader, *this);
    return true;
}

int CorvaneFrameData::writeXML(AssetXmlWriter& w, std::u16string name) {
    const std::u16string url = name + u"/" + pluginType();
    w.beginAsset(url, pluginKind(), u"");
    w.beginPlugin(pluginType(), pluginKind());
    w.beginParameters();
    w.writeFloat("t", static_cast<float>(t));
    w.writeFloat("frameStart", static_cast<float>(frameStart));
    w.writeFloat("frameEnd", static_cast<float>(frameEnd));
    w.writeInteger("currentFrame", currentFrame);
    w.writeTransform("worldToCam", narrowed(worldToCam));
    w.writeTransform("camToWorld", narrowed(camToWorld));
    w.writeFloat("fov", fov);
    w.writeFloat("nearRange", nearRange);
    w.writeFloat("farRange", farRange);
    w.writeInteger("clippingPlanes", clippingPlanes);
    w.writeFloat("clipNear", clipNear);
    w.writeFloat("clipFar", clipFar);
    w.writeInteger("projType", projType);
    w.writeFloat("zoomFractor", zoomFractor);
    w.writeInteger("infiniteProj", infiniteProj);
    w.writeInteger("orthoAdjustToScene", orthoAdjustToScene);
    w.writeColor("ambient", ambient);
    w.writeColor("background", background);
    w.writeColor("globalLightLevel", globalLightLevel);
    w.writeColor("ombraGIBackground", ombraGIBackground);
    w.writeColor("ombraRRBackground", ombraRRBackground);
    w.writeColor("ombraRefractBackground", ombraRefractBackground);
    w.writeFloat("devAspect", devAspect);
    w.writeInteger("fieldMask", fieldMask);
    w.writeInteger("fieldOrder", fieldOrder);
    w.writeInteger("firstField", firstField);
    w.endParameters();
    w.endPlugin();
    w.endAsset();
    return 0;
}

// ---------------------------------------------------------------- CorvaneOFBStampInfo

bool CorvaneOFBStampInfo::serialize(QuickArchive& archive) {
    writeVersion(archive, kMajor);
    archive.write(stampEnabled);
    archive.write(stampFlag);
    archive.write(stampMode);
    archive.write(utf8ToWide(stampText));
    archive.writeBuffer(stampFont.data(), stampFont.size());
    return true;
}

bool CorvaneOFBStampInfo::deserialize(QuickArchive& archive) {
    setDefaults();
    uint32_t major = 0;
    if (!readVersion(archive, major) || major < 1 || major > kMajor) return false;
    archive.read(stampEnabled);
    archive.read(stampFlag);
    archive.read(stampMode);
    std::u16string text;
    archive.read(text);
    stampText = wideToUtf8(text);  // an empty stored text replaces the default as well
    if (major == 1) {
        archive.readBytes(stampFont.data(), stampFont.size());
    } else {
        archive.readBuffer(stampFont.data(), stampFont.size(), false);
    }
    return true;
}

}  // namespace CorvaneCore
