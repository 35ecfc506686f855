#include <typeindex>
#include <unordered_map>

#include "archive/class_names.h"
#include "lights/base_light.h"
#include "lights/ies_light.h"
#include "lights/maya_direct_light.h"
#include "lights/omni_light.h"
#include "lights/rectangle_light.h"
#include "lights/sphere_light.h"
#include "lights/spot_light.h"
#include "lights/sun_light.h"
#include "materials/base_brdf.h"
#include "materials/base_material.h"
#include "materials/brdf.h"
#include "materials/material.h"
#include "materials/material_linked.h"
#include "materials/scene_materials.h"
#include "materials/wrappers.h"
#include "options/all_options.h"
#include "textures/base_texture.h"
#include "textures/base_uvw.h"
#include "textures/procedural.h"
#include "textures/sky.h"
#include "textures/texture.h"
#include "textures/uvw.h"
#include "upgrade/skp_module.h"

namespace CorvaneCore {
namespace {

#define QUILLON_NAMED(type) \
    { std::type_index(typeid(type)), #type }

// Every class a record can hold, the family bases that name a family in a refusal, and the
// objects a scene record reads at its top level.
const std::unordered_map<std::type_index, const char*>& names() {
    static const std::unordered_map<std::type_index, const char*> table = {
        QUILLON_NAMED(Base_BRDF),
        QUILLON_NAMED(Glass_BRDF),
        QUILLON_NAMED(Diffuse_BRDF),
        QUILLON_NAMED(Blinn_BRDF),
        QUILLON_NAMED(Phong_BRDF),
        QUILLON_NAMED(Mirror_BRDF),
        QUILLON_NAMED(Light_BRDF),
        QUILLON_NAMED(BaseMaterial),
        QUILLON_NAMED(MaterialSingleBRDF),
        QUILLON_NAMED(MaterialLayeredBRDF),
        QUILLON_NAMED(MaterialMulti),
        QUILLON_NAMED(MaterialBump),
        QUILLON_NAMED(MaterialInstance),
        QUILLON_NAMED(Material2Sided),
        QUILLON_NAMED(MaterialLinked),
        QUILLON_NAMED(MaterialSkp2Sided),
        QUILLON_NAMED(MaterialOverrideEnvironment),
        QUILLON_NAMED(MaterialDisplaced),
        QUILLON_NAMED(MaterialObjectExclusion),
        QUILLON_NAMED(MaterialAlphaContribution),
        QUILLON_NAMED(MaterialAngleBlend),
        QUILLON_NAMED(MaterialReference),
        QUILLON_NAMED(MaterialToon),
        QUILLON_NAMED(BaseTexture),
        QUILLON_NAMED(BitmapTexture),
        QUILLON_NAMED(FresnelTexture),
        QUILLON_NAMED(UVWTexture),
        QUILLON_NAMED(NoiseTexture),
        QUILLON_NAMED(CheckerTexture),
        QUILLON_NAMED(AColorTexture),
        QUILLON_NAMED(GridTexture),
        QUILLON_NAMED(ClothTexture),
        QUILLON_NAMED(BulgeTexture),
        QUILLON_NAMED(InvertTexture),
        QUILLON_NAMED(BlendTexture),
        QUILLON_NAMED(RampTexture),
        QUILLON_NAMED(SkyTexture),
        QUILLON_NAMED(BaseBitmap),
        QUILLON_NAMED(BitmapBuffer),
        QUILLON_NAMED(BaseUVW),
        QUILLON_NAMED(GenPlanarWorldUVW),
        QUILLON_NAMED(GenObjectUVW),
        QUILLON_NAMED(GenEnvironmentUVW),
        QUILLON_NAMED(GenChannelUVW),
        QUILLON_NAMED(BaseLight),
        QUILLON_NAMED(MayaDirectLight),
        QUILLON_NAMED(OmniLight),
        QUILLON_NAMED(RectangleLight),
        QUILLON_NAMED(SpotLight),
        QUILLON_NAMED(SunLight),
        QUILLON_NAMED(IESLight),
        QUILLON_NAMED(SphereLight),
        QUILLON_NAMED(AllOptions),
        QUILLON_NAMED(SceneMaterials),
        QUILLON_NAMED(SkpModule)};
    return table;
}

#undef QUILLON_NAMED

}  // namespace

const char* className(const std::type_info& type) {
    const auto& table = names();
    const auto found = table.find(std::type_index(type));
    return found == table.end() ? "unlisted class" : found->second;
}

}  // namespace CorvaneCore
