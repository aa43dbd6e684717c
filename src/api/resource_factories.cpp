// The table of factories: the one place that knows every resource class.
#include "api/resource_factories.h"

#include "content/color_space.h"
#include "content/ext_gstate.h"
#include "content/xobject_factory.h"
#include "fonts/cmap.h"
#include "fonts/font_resource.h"
#include "paint/function.h"
#include "paint/halftone.h"
#include "paint/pattern.h"
#include "paint/shading.h"

namespace zorvan {

ResourceFactories BuiltInFactories() {
    ResourceFactories factories{};
    factories[ListOf(ResourceCategory::kFont)] = CreateFontResource;
    factories[ListOf(ResourceCategory::kColorSpace)] = CreateColorSpaceResource;
    factories[ListOf(ResourceCategory::kExtGState)] = CreateExtGState;
    factories[ListOf(ResourceCategory::kXObject)] = CreateXObjectResource;
    factories[ListOf(ResourceCategory::kPattern)] = CreatePatternResource;
    factories[ListOf(ResourceCategory::kShading)] = CreateShadingResource;
    factories[ListOf(ResourceCategory::kFunction)] = CreateFunctionResource;
    factories[ListOf(ResourceCategory::kCMap)] = CreateCMapResource;
    factories[ListOf(ResourceCategory::kHalftone)] = CreateHalftoneResource;
    return factories;
}

}  // namespace zorvan
