#include "options/options_groups.h"

#include "archive/quick_archive.h"
#include "archive/read_helpers.h"
#include "options/options_rows.h"
#include "xml/asset_frame.h"
#include "xml/asset_xml_writer.h"
#include "xml/text.h"

namespace CorvaneCore {

namespace {

constexpr uint32_t kFirstParamsMajor = 1;
constexpr uint32_t kDetailRowsSince = 5;
constexpr uint32_t kSamplerSlotSince = 2;
// The renderer only ever runs the path sampler of this kind; stored values are overruled.
constexpr int32_t kForcedPathSamplerType = 2;

template <class Fn>
void visitSamplingRows(Fn& fn, OmbraUtils::OmbraParams& p) {
    auto& is = p.imageSampler;
    auto& c = p.carried;
    fn(1, p.imageFilter.on);
    fn(1, is.type);
    fn(1, is.fixed_subdivs);
    fn(1, is.dmc_minSubdivs);
    fn(1, is.dmc_maxSubdivs);
    fn(1, is.dmc_threshold);
    fn(1, is.subdivision_minRate);
    fn(1, is.subdivision_maxRate);
    fn(1, is.subdivision_threshold);
    fn(1, is.subdivision_jitter);
    fn(1, is.subdivision_edges);
    fn(1, c.carried01);
    fn(1, is.subdivision_normals);
    fn(1, is.subdivision_normals_threshold);
    fn(1, c.carried02);
    fn(1, c.carried03);
    fn(1, p.camera.type);
    auto& dof = p.cameraDof;
    fn(1, dof.on);
    fn(1, dof.subdivs);
    fn(1, dof.center_bias);
    fn(1, dof.sides_on);
    fn(1, dof.sides_num);
    fn(1, dof.anisotropy);
    auto& mb = p.motionBlur;
    fn(1, mb.on);
    fn(1, mb.geom_samples);
    fn(1, c.carried04);
    fn(1, c.carried05);
    fn(1, mb.subdivs);
    fn(1, c.carried06);
    fn(1, c.carried07);
    fn(1, c.carried08);
    fn(1, c.carried09);
    fn(1, c.carried10);
    fn(1, mb.low_samples);
    fn(1, mb.duration);
    fn(1, mb.interval_center);
    fn(1, c.carried11);
    fn(1, mb.bias);
}

template <class Fn>
void visitGIRows(Fn& fn, OmbraUtils::OmbraParams& p) {
    auto& gi = p.gi;
    fn(1, gi.on);
    fn(1, gi.refract_caustics);
    fn(1, gi.reflect_caustics);
    fn(1, gi.saturation);
    fn(1, gi.contrast);
    fn(1, gi.contrast_base);
    fn(1, gi.primary_engine);
    fn(1, gi.primary_multiplier);
    fn(1, gi.secondary_engine);
    fn(1, gi.secondary_multiplier);
    fn(1, p.dmcGI.subdivs);
    fn(1, p.dmcGI.depth);
    fn(1, gi.save_maps_per_frame);
}

template <class Fn>
void visitIrradianceRows(Fn& fn, OmbraUtils::OmbraParams& p) {
    auto& im = p.irradianceMap;
    fn(1, im.min_rate);
    fn(1, im.max_rate);
    fn(1, im.subdivs);
    fn(1, im.interp_samples);
    fn(1, im.calc_interp_samples);
    fn(1, im.color_threshold);
    fn(1, im.normal_threshold);
    fn(1, im.distance_threshold);
    fn(1, im.show_samples);
    fn(1, im.interpolation_mode);
    fn(1, im.mode);
    fn(1, im.dont_delete);
    fn(1, im.randomize_samples);
    fn(1, im.show_calc_phase);
    fn(1, im.show_direct_light);
    fn(1, im.multipass);
    fn(1, im.auto_save);
    {
        CachePathRow path{p.files.irradianceFile};
        fn(1, path);
    }
    fn(1, im.lookup_mode);
    fn(1, im.check_sample_visibility);
    fn(1, p.carried.carried12);
    {
        CachePathRow path{p.files.irradianceAutoSaveFile};
        fn(1, path);
    }
    // Older renderers kept a single detail value here that no longer maps to anything.
    RetiredRow<float> oldDetail{kDetailRowsSince};
    fn(1, oldDetail);
    fn(kDetailRowsSince, im.detail_enhancement);
    fn(kDetailRowsSince, im.detail_radius);
    fn(kDetailRowsSince, im.detail_subdivs_mult);
    fn(kDetailRowsSince, im.detail_scale);
}

template <class Fn>
void visitPhotonRows(Fn& fn, OmbraUtils::OmbraParams& p) {
    auto& pm = p.photonMap;
    fn(1, pm.bounces);
    fn(1, pm.search_distance);
    fn(1, pm.max_photons);
    fn(1, pm.prefilter);
    fn(1, pm.prefilter_samples);
    fn(1, pm.mode);
    fn(1, pm.multiplier);
    fn(1, pm.auto_search_distance);
    fn(1, pm.convex_hull_estimate);
    fn(1, pm.dont_delete);
    fn(1, pm.auto_save);
    {
        CachePathRow path{p.files.photonFile};
        fn(1, path);
    }
    fn(1, pm.retrace_corners);
    fn(1, pm.retrace_bounces);
    fn(1, pm.store_direct_light);
    fn(1, pm.max_density);
    {
        CachePathRow path{p.files.photonAutoSaveFile};
        fn(1, path);
    }
}

template <class Fn>
void visitLightCacheRows(Fn& fn, OmbraUtils::OmbraParams& p) {
    auto& lc = p.lightCache;
    fn(1, lc.subdivs);
    fn(1, lc.sample_size);
    fn(1, lc.filter_type);
    fn(1, lc.filter_size);
    fn(1, lc.depth);
    fn(1, lc.show_calc_phase);
    fn(1, lc.store_direct_light);
    fn(1, lc.world_scale);
    fn(1, lc.mode);
    {
        CachePathRow path{p.files.lightCacheFile};
        fn(1, path);
    }
    fn(1, lc.dont_delete);
    fn(1, lc.auto_save);
    {
        CachePathRow path{p.files.lightCacheAutoSaveFile};
        fn(1, path);
    }
    fn(1, lc.filter_samples);
    fn(1, lc.prefilter);
    fn(1, lc.prefilter_samples);
    fn(1, lc.use_for_glossy_rays);
    fn(1, lc.num_passes);
    fn(1, lc.adaptive_sampling);
}

template <class Fn>
void visitCausticsRows(Fn& fn, OmbraUtils::OmbraParams& p) {
    auto& ca = p.caustics;
    fn(1, ca.on);
    fn(1, ca.search_distance);
    fn(1, ca.max_photons);
    fn(1, ca.multiplier);
    fn(1, ca.max_density);
    fn(1, ca.mode);
    fn(1, ca.dont_delete);
    fn(1, ca.auto_save);
    {
        CachePathRow path{p.files.causticsFile};
        fn(1, path);
    }
    {
        CachePathRow path{p.files.causticsAutoSaveFile};
        fn(1, path);
    }
}

template <class Fn>
void visitEngineRows(Fn& fn, OmbraUtils::OmbraParams& p) {
    auto& rc = p.raycaster;
    fn(1, rc.maxLevels);
    fn(1, rc.minLeafSize);
    fn(1, rc.faceLevelCoef);
    fn(1, rc.dynMemLimit);
    auto& rg = p.regionsGenerator;
    fn(1, rg.xc);
    fn(1, rg.yc);
    fn(1, rg.xymeans);
    fn(1, rg.seqtype);
    fn(1, rg.reverse);
    IgnoredRow<int32_t> reserved{0};
    fn(1, reserved);
    auto& dmc = p.dmcSampler;
    fn(1, dmc.time_dependent);
    fn(1, p.carried.carried13);
    fn(1, dmc.adaptive_amount);
    fn(1, dmc.adaptive_threshold);
    fn(1, dmc.adaptive_min_samples);
    fn(1, dmc.subdivs_mult);
    ForcedRow samplerSlot{dmc.path_sampler_type, kForcedPathSamplerType};
    fn(kSamplerSlotSince, samplerSlot);
    auto& cm = p.colorMapping;
    fn(1, cm.type);
    fn(1, cm.affect_background);
    fn(1, cm.clamp_output);
    fn(3, cm.subpixel_mapping);
    fn(4, cm.gamma);
}

template <class Fn>
void visitOptionRows(Fn& fn, OmbraUtils::OmbraParams& p) {
    auto& o = p.options;
    fn(1, o.geom_displacement);
    fn(1, o.light_doLights);
    fn(1, o.light_doShadows);
    fn(1, o.light_doDefaultLights);
    fn(1, o.light_onlyGI);
    fn(1, o.light_doHiddenLights);
    fn(1, o.mtl_reflectionRefraction);
    fn(1, o.mtl_limitDepth);
    fn(1, o.mtl_maxDepth);
    fn(1, o.mtl_doMaps);
    fn(1, o.mtl_filterMaps);
    fn(1, o.mtl_transpMaxLevels);
    fn(1, o.mtl_transpCutoff);
    fn(1, o.mtl_glossy);
    fn(1, o.gi_dontRenderImage);
    fn(1, o.mtl_override_on);
    fn(1, o.ray_bias);
    fn(1, p.carried.carried14);
    fn(1, o.misc_lowThreadPriority);
    auto& dd = p.defaultDisplacement;
    fn(1, dd.override_on);
    fn(1, dd.edgeLength);
    fn(1, dd.viewDependent);
    fn(1, dd.maxSubdivs);
    fn(1, dd.tightBounds);
    fn(1, dd.amount);
    fn(1, dd.relative);
    fn(1, p.carried.carried15);
    fn(1, p.carried.carried16);
}

template <class Fn>
void visitParams(Fn& fn, OmbraUtils::OmbraParams& p) {
    visitSamplingRows(fn, p);
    visitGIRows(fn, p);
    visitIrradianceRows(fn, p);
    visitPhotonRows(fn, p);
    visitLightCacheRows(fn, p);
    visitCausticsRows(fn, p);
    visitEngineRows(fn, p);
    visitOptionRows(fn, p);
}

// The renderer's settings, each row with the major that added it.
struct ParamsRows {
    template <class Fn>
    static void visitFields(Fn& fn, OmbraUtils::OmbraParams& p) {
        visitParams(fn, p);
    }
};

// The one version there is.
struct FrameDataRows {
    template <class Fn>
    static void visitFields(Fn& fn, OmbraUtils::OmbraFrameData& f) {
        fn(1, f.t);
        fn(1, f.frameStart);
        fn(1, f.frameEnd);
        fn(1, f.currentFrame);
        fn(1, f.worldToCam);
        fn(1, f.camToWorld);
        fn(1, f.fov);
        fn(1, f.nearRange);
        fn(1, f.farRange);
        fn(1, f.focal_dist);
        fn(1, f.aperture);
        fn(1, f.rotation);
        fn(1, f.clippingPlanes);
        fn(1, f.clipNear);
        fn(1, f.clipFar);
        fn(1, f.projType);
        fn(1, f.zoomFractor);
        fn(1, f.infiniteProj);
        fn(1, f.height);
        fn(1, f.auto_fit);
        fn(1, f.dist);
        fn(1, f.curve);
        fn(1, f.orthoAdjustToScene);
        fn(1, f.ambient);
        fn(1, f.background);
        fn(1, f.globalLightLevel);
        fn(1, f.ombraGIBackground);
        fn(1, f.ombraRRBackground);
        fn(1, f.ombraRefractBackground);
        fn(1, f.rgn_left);
        fn(1, f.rgn_width);
        fn(1, f.rgn_top);
        fn(1, f.rgn_height);
        fn(1, f.frameCarriedA);
        fn(1, f.frameCarriedB);
        fn(1, f.bmp_width);
        fn(1, f.bmp_height);
        fn(1, f.r_left);
        fn(1, f.r_width);
        fn(1, f.r_top);
        fn(1, f.r_height);
        fn(1, f.devAspect);
        fn(1, f.fieldMask);
        fn(1, f.fieldOrder);
        fn(1, f.firstField);
        fn(1, f.dark_mult);
        fn(1, f.bright_mult);
    }
};

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
    return writeVersionedRows<ParamsRows>(archive, kMajor, static_cast<OmbraParams&>(*this));
}

bool CorvaneParams::deserialize(QuickArchive& archive) {
    setDefaults();
    return readVersionedRows<ParamsRows>(archive, kFirstParamsMajor, kMajor,
                                         static_cast<OmbraParams&>(*this));
}

// ---------------------------------------------------------------- CorvaneFrameData

bool CorvaneFrameData::serialize(QuickArchive& archive) {
    return writeVersionedRows<FrameDataRows>(archive, kMajor, static_cast<OmbraFrameData&>(*this));
}

bool CorvaneFrameData::deserialize(QuickArchive& archive) {
    setDefaults();
    return readVersionedRows<FrameDataRows>(archive, kMajor, kMajor,
                                            static_cast<OmbraFrameData&>(*this));
}

int CorvaneFrameData::writeXML(AssetXmlWriter& w, std::u16string name) {
    const std::u16string url = name + u"/" + pluginType();
    beginAssetFrame(w, url, *this);
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
    endAssetFrame(w);
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
    if (!readVersionIn(archive, 1, kMajor, major)) return false;
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
